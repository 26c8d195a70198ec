#include "brel/rewrite/objective_function.h"

#include <cmath>
#include <vector>

#include "brel/expr/evaluate.h"
#include "brel/rewrite/evaluate.h"

namespace brel::rewrite {

ObjectiveFunction::ObjectiveFunction(const UserModel& user, const kavo_objective& objective)
    : columns_(user.columns.count), objective_(objective), quadratics_(user.quadratics) {
  if (objective.expression < 0) return;
  own_ = std::make_shared<OwnExpressions>(user);
  root_ = own_->number(objective.expression);
}

double ObjectiveFunction::at(std::span<const double> point) const {
  return objective_.constant + linear(point) + quadratic(point) + expression(point);
}

double ObjectiveFunction::linear(std::span<const double> point) const {
  double sum = 0;
  for (std::size_t k = 0; k < objective_.terms; ++k) {
    sum += objective_.value[k] * point[static_cast<std::size_t>(objective_.column[k])];
  }
  return sum;
}

double ObjectiveFunction::quadratic(std::span<const double> point) const {
  return objective_.quadratic < 0 ? 0 : quadraticValue(quadratics_, objective_.quadratic, point);
}

double ObjectiveFunction::expression(std::span<const double> point) const {
  if (!own_) return 0;
  if (root_ < 0) return std::nan("");
  std::vector<double> values;
  expr::evaluate(own_->graph(), point.first(columns_), values, kComparisonTolerance);
  return values[static_cast<std::size_t>(root_)];
}

}  // namespace brel::rewrite
