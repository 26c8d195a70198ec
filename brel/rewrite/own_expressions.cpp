#include "brel/rewrite/own_expressions.h"

#include <algorithm>

#include "brel/host.h"
#include "tav/opt/support_exception.h"

namespace brel::rewrite {
namespace {

kavo_expressions expressionsOf(trpRec* host) {
  kavo_expressions expressions{};
  checkHost(kavo_link_expressions(host, &expressions));
  return expressions;
}

}  // namespace

OwnExpressions::OwnExpressions(const UserModel& user)
    : columns_(user.columns),
      all_(expressionsOf(user.host)),
      expressions_(user.host, columns_, all_, graph_, expr::Bounds::ignored) {}

expr::NodeId OwnExpressions::made(int expression, Make make) {
  try {
    return (expressions_.*make)(expression, {});
  } catch (const tav::opt::SupportException&) {
    return -1;
  }
}

bool areExpressionsLinear(const UserModel& user) {
  OwnExpressions own(user);
  const auto isLinear = [&own](int expression) {
    if (expression < 0) return true;
    const expr::NodeId node = own.number(expression);
    return node >= 0 && own.graph().degree(node) <= expr::Degree::linear;
  };
  if (user.objective && !isLinear(user.objective->expression)) return false;
  if (user.rows.expression == nullptr) return true;
  return std::all_of(user.rows.expression, user.rows.expression + user.rows.count, isLinear);
}

}  // namespace brel::rewrite
