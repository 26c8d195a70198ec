#include "brel/rewrite/evaluate.h"

#include "brel/expr/evaluate.h"

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

UserPoint::UserPoint(const UserModel& user, const Beyond* beyond, std::span<const double> point)
    : user_(user), beyond_(beyond), point_(point) {
  if (beyond_ == nullptr || !beyond_->graph) return;
  expr::evaluate(*beyond_->graph, point_.first(user_.columns.count), nodes_, kComparisonTolerance,
                 beyond_->columns.definition);
}

double UserPoint::quadratic(std::size_t row) const {
  if (user_.rows.quadratic == nullptr || user_.rows.quadratic[row] < 0) return 0;
  return quadraticValue(user_.quadratics, user_.rows.quadratic[row], point_);
}

double UserPoint::expression(std::size_t row) const {
  if (user_.rows.expression == nullptr || user_.rows.expression[row] < 0) return 0;
  return node(beyond_->nodes.row[row]);
}

}  // namespace brel::rewrite
