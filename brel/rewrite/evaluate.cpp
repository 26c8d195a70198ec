#include "brel/rewrite/evaluate.h"

#include <cmath>

#include "brel/expr/evaluate.h"
#include "brel/rewrite/own_expressions.h"

namespace brel::rewrite {

double quadraticValue(const kavo_quadratics& all, int number, std::span<const double> point) {
  const auto terms = static_cast<std::size_t>(number);
  double sum = 0;
  for (std::size_t k = all.start[terms]; k < all.start[terms + 1]; ++k) {
    sum +=
        all.value[k] * point[static_cast<std::size_t>(all.first[k])] * point[static_cast<std::size_t>(all.second[k])];
  }
  return sum;
}

UserPoint::UserPoint(const UserModel& user, std::span<const double> point) : user_(user), point_(point) {
  const int* ofRow = user.rows.expression;
  if (ofRow == nullptr && user.logical.count == 0) return;
  OwnExpressions own(user);
  std::vector<expr::NodeId> rowNodes, logicalNodes;
  for (std::size_t i = 0; ofRow != nullptr && i < user.rows.count; ++i) {
    rowNodes.push_back(ofRow[i] < 0 ? expr::NodeId{-1} : own.number(ofRow[i]));
  }
  for (std::size_t k = 0; k < user.logical.count; ++k) logicalNodes.push_back(own.truth(user.logical.expression[k]));
  std::vector<double> values;
  expr::evaluate(own.graph(), point.first(user.columns.count), values, kComparisonTolerance);
  const auto valueOf = [&values](expr::NodeId node) {
    return node < 0 ? std::nan("") : values[static_cast<std::size_t>(node)];
  };
  for (std::size_t i = 0; i < rowNodes.size(); ++i) expression_.push_back(ofRow[i] < 0 ? 0 : valueOf(rowNodes[i]));
  for (const expr::NodeId node : logicalNodes) logical_.push_back(valueOf(node));
}

double UserPoint::quadratic(std::size_t row) const {
  if (user_.rows.quadratic == nullptr || user_.rows.quadratic[row] < 0) return 0;
  return quadraticValue(user_.quadratics, user_.rows.quadratic[row], point_);
}

}  // namespace brel::rewrite
