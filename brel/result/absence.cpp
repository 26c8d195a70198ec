#include "brel/result/absence.h"

#include <algorithm>

namespace brel::result {
namespace {

bool hasType(const kavo_columns& columns, std::initializer_list<unsigned char> types) {
  return std::any_of(columns.type, columns.type + columns.count,
                     [&](unsigned char type) { return std::find(types.begin(), types.end(), type) != types.end(); });
}

// Whether anything was sent that only a search can deal with.
bool isNonlinear(const rewrite::Beyond& beyond) {
  const auto& integers = beyond.columns.isInteger;
  return beyond.nonlinear.heads.size() > 0 || beyond.indicator.heads.size() > 0 || !beyond.sets.type.empty() ||
         beyond.objective.kind == rewrite::BeyondObjective::Kind::nonlinear ||
         std::find(integers.begin(), integers.end(), 1) != integers.end();
}

}  // namespace

std::string discreteParts(const load::TranslatedModel& model) {
  const UserModel& user = model.user;
  if (hasType(user.columns, {KAVO_BINARY, KAVO_INTEGER, KAVO_SEMIINTEGER})) return "integer variables";
  if (hasType(user.columns, {KAVO_SEMICONTINUOUS})) return "semi-continuous variables";
  if (user.sets.count > 0) return "ordered sets";
  return user.logical.count > 0 ? "logical constraints" : "";
}

std::string whyNoDuals(const load::TranslatedModel& model, const tav::opt::AbstractSolverServices* services) {
  if (std::string parts = discreteParts(model); !parts.empty()) return parts;
  const rewrite::Beyond* beyond = model.sent.beyond();
  if (beyond != nullptr && isNonlinear(*beyond)) return "nonlinear functions";
  if (services != nullptr && services->isSearch()) return "quadratic parts that are not convex";
  if (beyond != nullptr && beyond->quadratic.heads.size() > 0) return "quadratic rows, whose duals need QCPDual 1";
  return "the solver has none at this end";
}

}  // namespace brel::result
