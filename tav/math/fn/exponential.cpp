#include "tav/math/fn/exponential.h"

#include <cmath>
#include <limits>

namespace tav::math::fn {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

}  // namespace

double Square::value(std::span<const double> arguments) const { return arguments[0] * arguments[0]; }

double SquareRoot::value(std::span<const double> arguments) const { return std::sqrt(arguments[0]); }

double Power::value(std::span<const double> arguments) const { return std::pow(arguments[0], arguments[1]); }

double Power0::value(std::span<const double> arguments) const { return std::pow(arguments[0], arguments[1]); }

double PowerConst::value(std::span<const double> arguments) const { return std::pow(arguments[0], arguments[1]); }

double SignPower::value(std::span<const double> arguments) const {
  const double base = arguments[0];
  const double exponent = arguments[1];
  if (base == 0) return exponent >= 0 ? 0 : kNaN;
  return std::copysign(std::pow(std::fabs(base), exponent), base);
}

double Exp::value(std::span<const double> arguments) const { return std::exp(arguments[0]); }

double Log::value(std::span<const double> arguments) const { return std::log(arguments[0]); }

double Log2::value(std::span<const double> arguments) const { return std::log2(arguments[0]); }

double Log10::value(std::span<const double> arguments) const { return std::log10(arguments[0]); }

double LogBase::value(std::span<const double> arguments) const {
  const double base = arguments[1];
  if (!(base > 0) || base == 1) return kNaN;
  if (base == 2) return std::log2(arguments[0]);
  if (base == 10) return std::log10(arguments[0]);
  // The quotient misses whole results by a bit (ln 125 / ln 5), which the two functions above do not.
  const double quotient = std::log(arguments[0]) / std::log(base);
  const double whole = std::round(quotient);
  return std::pow(base, whole) == arguments[0] ? whole : quotient;
}

double Sigmoid::value(std::span<const double> arguments) const {
  const double x = arguments[0];
  if (x >= 0) return 1 / (1 + std::exp(-x));
  const double e = std::exp(x);
  return e / (1 + e);
}

double Polynomial::value(std::span<const double> arguments) const {
  double sum = 0;
  for (const double coefficient : arguments.subspan(1)) {
    // Zero times an infinite input would be NaN before the first power that counts.
    sum = sum == 0 ? coefficient : sum * arguments[0] + coefficient;
  }
  return sum;
}

}  // namespace tav::math::fn
