#pragma once

#include <cstddef>
#include <span>
#include <vector>

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

// The user's own functions at a point, whether it keeps his bounds or not. NaN: unknown, since a column is, or outside
// a function's domain.
class UserPoint {
 public:
  // point: one value per user's column, or more. Both must outlive this.
  UserPoint(const UserModel& user, std::span<const double> point);

  std::span<const double> point() const { return point_; }
  double activity(std::size_t row) const {
    return rewrite::activity(user_.rows, row, point_) + quadratic(row) + (expression_.empty() ? 0 : expression_[row]);
  }
  // Of a logical constraint: 1 when it is true, 0 when not.
  double logical(std::size_t constraint) const { return logical_[constraint]; }

 private:
  double quadratic(std::size_t row) const;

  const UserModel& user_;
  std::span<const double> point_;
  std::vector<double> expression_;  // per row, 0 for one without; empty: none has one
  std::vector<double> logical_;
};

}  // namespace brel::rewrite
