#include "tav/math/fn/norm.h"

#include <cmath>

namespace tav::math::fn {

namespace {

double largest(std::span<const double> values) {
  double result = 0;
  for (const double value : values) {
    if (std::isnan(value)) return value;
    result = std::fmax(result, std::fabs(value));
  }
  return result;
}

}  // namespace

double Norm1::value(std::span<const double> arguments) const {
  double sum = 0;
  for (const double value : arguments) sum += std::fabs(value);
  return sum;
}

double Norm2::value(std::span<const double> arguments) const {
  const double scale = largest(arguments);
  if (scale == 0 || !std::isfinite(scale)) return scale;
  // Squares of such elements neither overflow nor vanish: no scaling, hence no rounding by it.
  const bool isSafe = scale > 1e-140 && scale < 1e140;
  double sum = 0;
  for (const double value : arguments) {
    const double x = isSafe ? value : value / scale;
    sum += x * x;
  }
  return isSafe ? std::sqrt(sum) : scale * std::sqrt(sum);
}

double NormInf::value(std::span<const double> arguments) const { return largest(arguments); }

}  // namespace tav::math::fn
