#include "tav/math/fn/logic.h"

#include <algorithm>
#include <cmath>

namespace tav::math::fn {

namespace {

bool isTrue(double value) { return value > 0.5; }

}  // namespace

double BoolAnd::value(std::span<const double> arguments) const {
  const auto unknown = std::find_if(arguments.begin(), arguments.end(), [](double x) { return std::isnan(x); });
  if (unknown != arguments.end()) return *unknown;
  return std::all_of(arguments.begin(), arguments.end(), isTrue) ? 1 : 0;
}

double BoolOr::value(std::span<const double> arguments) const {
  const auto unknown = std::find_if(arguments.begin(), arguments.end(), [](double x) { return std::isnan(x); });
  if (unknown != arguments.end()) return *unknown;
  return std::any_of(arguments.begin(), arguments.end(), isTrue) ? 1 : 0;
}

}  // namespace tav::math::fn
