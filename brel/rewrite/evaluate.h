#pragma once

#include <cmath>
#include <cstddef>
#include <span>
#include <vector>

#include "brel/rewrite/beyond.h"
#include "brel/user_model.h"

namespace brel::rewrite {

// Comparisons inside expressions take numbers that are this close for equal.
inline constexpr double kComparisonTolerance = 1e-6;

// The activity of the linear terms of a user's row at a point (one value per column or more).
inline double activity(const kavo_rows& rows, std::size_t row, std::span<const double> point) {
  double sum = 0;
  for (std::size_t k = rows.start[row]; k < rows.start[row + 1]; ++k) {
    sum += rows.value[k] * point[static_cast<std::size_t>(rows.column[k])];
  }
  return sum;
}

// The value of the quadratic terms `number` at a point.
double quadraticValue(const kavo_quadratics& all, int number, std::span<const double> point);

// The user's own functions at a point: one sweep over the graph of his expressions, then every question is answered
// from it. NaN: unknown, since a column is, or outside a function's domain.
class UserPoint {
 public:
  // point: one value per user's column, or more. beyond: null for a model with linear rows only. All must outlive this.
  UserPoint(const UserModel& user, const Beyond* beyond, std::span<const double> point);

  std::span<const double> point() const { return point_; }
  double activity(std::size_t row) const {
    const double linear = rewrite::activity(user_.rows, row, point_);
    return beyond_ == nullptr ? linear : linear + quadratic(row) + expression(row);
  }
  // Of a logical constraint: 1 when it is true, 0 when not.
  double logical(std::size_t constraint) const { return node(beyond_->nodes.logical[constraint]); }
  // The value that a column of `beyond` has when it is what it stands for.
  double auxiliary(std::size_t column) const { return node(beyond_->columns.definition[column]); }

 private:
  double quadratic(std::size_t row) const;
  double expression(std::size_t row) const;
  double node(expr::NodeId id) const { return id < 0 ? std::nan("") : nodes_[static_cast<std::size_t>(id)]; }

  const UserModel& user_;
  const Beyond* beyond_;
  std::span<const double> point_;
  std::vector<double> nodes_;
};

}  // namespace brel::rewrite
