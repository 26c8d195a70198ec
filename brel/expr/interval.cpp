#include "brel/expr/interval.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace brel::expr {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kSmallest = std::numeric_limits<double>::denorm_min();

enum class Toward { down, up };

double limit(Toward toward) { return toward == Toward::down ? -kInfinity : kInfinity; }

// A rounded result and the error that was made (exact minus result), as a bound.
double bound(double result, double error, Toward toward) {
  const bool isBeyond = toward == Toward::down ? error < 0 : error > 0;
  return isBeyond ? std::nextafter(result, limit(toward)) : result;
}

// An infinite result of finite operands.
double overflown(double result, Toward toward) {
  return result == limit(toward) ? result : std::copysign(kLargest, result);
}

double sum(double a, double b, Toward toward) {
  if (std::isinf(a) && std::isinf(b) && a != b) return limit(toward);
  const double s = a + b;
  if (std::isinf(a) || std::isinf(b)) return s;
  if (std::isinf(s)) return overflown(s, toward);
  const double partOfB = s - a;
  return bound(s, (a - (s - partOfB)) + (b - partOfB), toward);
}

double product(double a, double b, Toward toward) {
  if (a == 0 || b == 0) return 0;
  const double p = a * b;
  if (std::isinf(a) || std::isinf(b)) return p;
  if (std::isinf(p)) return overflown(p, toward);
  const bool isPositive = (a > 0) == (b > 0);
  if (p == 0) return isPositive == (toward == Toward::up) ? std::copysign(kSmallest, isPositive ? 1.0 : -1.0) : 0;
  // Close to the smallest numbers the error itself is rounded away.
  if (std::fabs(p) < 1e-290) return std::nextafter(p, limit(toward));
  return bound(p, std::fma(a, b, -p), toward);
}

double quotient(double a, double b, Toward toward) {
  const double q = a / b;
  if (std::isinf(a) || std::isinf(b)) return q;
  if (std::isinf(q)) return overflown(q, toward);
  if (std::fabs(q) < 1e-290) return std::nextafter(q, limit(toward));
  const double rest = std::fma(-q, b, a);
  return bound(q, b > 0 ? rest : -rest, toward);
}

Interval reciprocal(Interval a) {
  if (a.lower > 0 || a.upper < 0) return {quotient(1, a.upper, Toward::down), quotient(1, a.lower, Toward::up)};
  if (a.lower == 0 && a.upper > 0) return {quotient(1, a.upper, Toward::down), kInfinity};
  if (a.upper == 0 && a.lower < 0) return {-kInfinity, quotient(1, a.lower, Toward::up)};
  return kEverything;
}

// Whether some of offset, offset + period, offset + 2 period, ... lies within (also when it is missed by rounding).
bool meets(Interval a, double offset, double period) {
  const double slack = 1e-12 * (1 + std::max(std::fabs(a.lower), std::fabs(a.upper)));
  return std::floor((a.upper + slack - offset) / period) >= std::ceil((a.lower - slack - offset) / period);
}

// Arguments beyond this are too large to tell where in a period they are.
bool isPeriodic(Interval a) { return a.upper - a.lower < 7 && std::max(std::fabs(a.lower), std::fabs(a.upper)) < 1e6; }

// Sine or cosine, with the place of a maximum.
Interval oscillating(Interval a, double (*function)(double), double maximum) {
  constexpr double kPeriod = 2 * std::numbers::pi;
  if (!isPeriodic(a)) return {-1, 1};
  const auto [low, high] = std::minmax({function(a.lower), function(a.upper)});
  Interval result = intersect(widen({low, high}), {-1, 1});
  if (meets(a, maximum, kPeriod)) result.upper = 1;
  if (meets(a, maximum + std::numbers::pi, kPeriod)) result.lower = -1;
  return result;
}

}  // namespace

Interval add(Interval a, Interval b) {
  return {sum(a.lower, b.lower, Toward::down), sum(a.upper, b.upper, Toward::up)};
}

Interval scale(Interval a, double factor) {
  if (factor < 0) std::swap(a.lower, a.upper);
  return {product(a.lower, factor, Toward::down), product(a.upper, factor, Toward::up)};
}

Interval multiply(Interval a, Interval b) { return hull(scale(b, a.lower), scale(b, a.upper)); }

Interval square(Interval a) {
  const Interval size = absolute(a);
  return {product(size.lower, size.lower, Toward::down), product(size.upper, size.upper, Toward::up)};
}

Interval divide(Interval a, Interval b) { return multiply(a, reciprocal(b)); }

Interval hull(Interval a, Interval b) { return {std::min(a.lower, b.lower), std::max(a.upper, b.upper)}; }

Interval intersect(Interval a, Interval b) { return {std::max(a.lower, b.lower), std::min(a.upper, b.upper)}; }

Interval absolute(Interval a) {
  if (a.lower >= 0) return a;
  if (a.upper <= 0) return {-a.upper, -a.lower};
  return {0, std::max(-a.lower, a.upper)};
}

Interval power(Interval a, double exponent) {
  constexpr Interval kPositive{0, kInfinity};
  const auto raised = [exponent](double x) { return std::pow(x, exponent); };
  if (exponent == std::round(exponent)) {
    if (exponent < 0) return reciprocal(power(a, -exponent));
    if (std::fmod(exponent, 2) == 0) return monotone(absolute(a), Slope::rising, kPositive, kPositive, raised);
    return monotone(a, Slope::rising, kEverything, kEverything, raised);
  }
  return monotone(a, exponent > 0 ? Slope::rising : Slope::falling, kPositive, kPositive, raised);
}

Interval signedPower(Interval a, double exponent) {
  return monotone(a, Slope::rising, kEverything, kEverything,
                  [exponent](double x) { return std::copysign(std::pow(std::fabs(x), exponent), x); });
}

Interval sine(Interval a) { return oscillating(a, std::sin, std::numbers::pi / 2); }

Interval cosine(Interval a) { return oscillating(a, std::cos, 0); }

Interval tangent(Interval a) {
  if (!isPeriodic(a) || meets(a, std::numbers::pi / 2, std::numbers::pi)) return kEverything;
  return widen({std::tan(a.lower), std::tan(a.upper)});
}

Interval widen(Interval a) {
  for (int k = 0; k < 4; ++k) a = {std::nextafter(a.lower, -kInfinity), std::nextafter(a.upper, kInfinity)};
  return a;
}

}  // namespace brel::expr
