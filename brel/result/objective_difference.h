#pragma once

#include <algorithm>
#include <cmath>

namespace brel::result {

// Whether the objective that a solver tells of a point is another one than the model's own functions have there: a
// solver holds functions to a tolerance only, or has approximations of them. Not where one of the two is no number.
inline bool isObjectiveOff(double own, double solvers) {
  constexpr double kTolerance = 1e-6;  // relative to values beyond 1
  return std::abs(own - solvers) > kTolerance * std::max(1.0, std::abs(own));
}

}  // namespace brel::result
