#include "brel/expr/range.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "brel/expr/operation.h"

namespace brel::expr {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr Interval kPositive{0, kInfinity};
constexpr Interval kTruth{0, 1};
constexpr double kPi = std::numbers::pi;

bool isWhole(double x) { return x == std::round(x); }

bool contains(Interval a, double x) { return a.lower <= x && x <= a.upper; }

// One child, strictly monotone or periodic.
Interval rangeOfFunction(Op op, double value, Interval x) {
  using enum Slope;
  switch (op) {
    case Op::exponential:
      return monotone(x, value >= 1 ? rising : falling, kEverything, kPositive,
                      [value](double t) { return std::pow(value, t); });
    case Op::sqrt:
      return monotone(x, rising, kPositive, kPositive, [](double t) { return std::sqrt(t); });
    case Op::exp:
      return monotone(x, rising, kEverything, kPositive, [](double t) { return std::exp(t); });
    case Op::log:
      return monotone(x, rising, kPositive, kEverything, [](double t) { return std::log(t); });
    case Op::log2:
      return monotone(x, rising, kPositive, kEverything, [](double t) { return std::log2(t); });
    case Op::log10:
      return monotone(x, rising, kPositive, kEverything, [](double t) { return std::log10(t); });
    case Op::logBase:
      return widen(monotone(x, value > 1 ? rising : falling, kPositive, kEverything,
                            [value](double t) { return std::log(t) / std::log(value); }));
    case Op::sigmoid:
      return monotone(x, rising, kEverything, kTruth, [](double t) { return 1 / (1 + std::exp(-t)); });
    case Op::tanh:
      return monotone(x, rising, kEverything, {-1, 1}, [](double t) { return std::tanh(t); });
    case Op::sin:
      return sine(x);
    case Op::cos:
      return cosine(x);
    case Op::tan:
      return tangent(x);
    case Op::asin:
      return monotone(x, rising, {-1, 1}, widen({-kPi / 2, kPi / 2}), [](double t) { return std::asin(t); });
    case Op::acos:
      return monotone(x, falling, {-1, 1}, {0, widen({0, kPi}).upper}, [](double t) { return std::acos(t); });
    case Op::atan:
      return monotone(x, rising, kEverything, widen({-kPi / 2, kPi / 2}), [](double t) { return std::atan(t); });
    case Op::sinh:
      return monotone(x, rising, kEverything, kEverything, [](double t) { return std::sinh(t); });
    case Op::cosh:
      return monotone(absolute(x), rising, kEverything, {1, kInfinity}, [](double t) { return std::cosh(t); });
    case Op::asinh:
      return monotone(x, rising, kEverything, kEverything, [](double t) { return std::asinh(t); });
    case Op::acosh:
      return monotone(x, rising, {1, kInfinity}, kPositive, [](double t) { return std::acosh(t); });
    case Op::atanh:
      return monotone(x, rising, {-1, 1}, kEverything, [](double t) { return std::atanh(t); });
    default:
      return kEverything;
  }
}

// How far off a value between or beyond the points may be computed.
double errorOfPiecewise(std::span<const Point> points, double value) {
  double largest = std::fabs(value);
  for (const Point& point : points) largest = std::max(largest, std::fabs(point.y));
  return 8 * std::numeric_limits<double>::epsilon() * largest;
}

Interval rangeOfPiecewise(std::span<const Point> points, Interval x) {
  Interval result{kInfinity, -kInfinity};
  bool isExact[]{!std::isfinite(x.lower), !std::isfinite(x.upper)};
  for (const Point& point : points) {
    if (!contains(x, point.x)) continue;
    result = hull(result, {point.y, point.y});
    isExact[0] = isExact[0] || point.x == x.lower;
    isExact[1] = isExact[1] || point.x == x.upper;
  }
  for (const double end : {x.lower, x.upper}) {
    if (std::exchange(isExact[0], isExact[1])) continue;
    const double value = apply(Op::piecewise, 0, {&end, 1}, points);
    const double error = errorOfPiecewise(points, value);
    result = hull(result, {value - error, value + error});
  }
  const auto takeSlope = [&result](double rise, double y) {
    const double limit = rise == 0 ? y : std::copysign(kInfinity, rise);
    result = hull(result, {limit, limit});
  };
  if (x.lower == -kInfinity) takeSlope(points[0].y - points[1].y, points[0].y);
  if (x.upper == kInfinity) takeSlope(points.back().y - points[points.size() - 2].y, points.back().y);
  return result;
}

Interval rangeOfAtan2(Interval y, Interval x) {
  const Interval half = widen({-kPi / 2, kPi / 2});
  if (x.lower > 0) return rangeOfFunction(Op::atan, 0, divide(y, x));
  if (x.lower >= 0) return half;
  return widen({-kPi, kPi});
}

// x - y * trunc(x / y): has the sign of x, and is smaller than y.
Interval rangeOfMod(Interval x, Interval y) {
  const double most = absolute(y).upper;
  return {x.lower >= 0 ? 0 : std::max(x.lower, -most), x.upper <= 0 ? 0 : std::min(x.upper, most)};
}

Interval rangeOfList(const Graph& graph, Op op, std::span<const NodeId> children) {
  Interval result = op == Op::min || op == Op::max ? graph.interval(children[0]) : Interval{0, 0};
  for (const NodeId child : children) {
    const Interval x = graph.interval(child);
    const Interval size = absolute(x);
    if (op == Op::min) result = {std::min(result.lower, x.lower), std::min(result.upper, x.upper)};
    if (op == Op::max) result = {std::max(result.lower, x.lower), std::max(result.upper, x.upper)};
    if (op == Op::norm1) result = add(result, size);
    if (op == Op::norm2) result = add(result, square(size));
    if (op == Op::normInf) result = {std::max(result.lower, size.lower), std::max(result.upper, size.upper)};
  }
  return op == Op::norm2 ? rangeOfFunction(Op::sqrt, 0, result) : result;
}

template <class Function>
Interval mapped(Interval a, const Function& function) {
  return {function(a.lower), function(a.upper)};
}

Interval rangeOfWhole(Op op, Interval x) {
  switch (op) {
    case Op::floor:
      return mapped(x, [](double t) { return std::floor(t); });
    case Op::ceil:
      return mapped(x, [](double t) { return std::ceil(t); });
    case Op::round:
      return mapped(x, [](double t) { return std::round(t); });
    default:
      return mapped(x, [](double t) { return std::trunc(t); });
  }
}

// x^y is positive for a positive base; for others it has a value only if the exponent is whole.
Interval rangeOfGeneralPower(Interval x, Interval y) {
  if (x.lower < 0) return kEverything;
  if (!(x.lower > 0)) return kPositive;
  return widen(rangeOfFunction(Op::exp, 0, widen(multiply(y, widen(rangeOfFunction(Op::log, 0, x))))));
}

Interval boundsOfCall(const Graph& graph, Op op, double value, std::span<const NodeId> children,
                      std::span<const Point> points) {
  const auto of = [&](std::size_t child) { return graph.interval(children[child]); };
  switch (op) {
    case Op::product:
      return children[0] == children[1] ? square(of(0)) : multiply(of(0), of(1));
    case Op::divide:
      return divide(of(0), of(1));
    case Op::power:
      return power(of(0), value);
    case Op::generalPower:
      return rangeOfGeneralPower(of(0), of(1));
    case Op::signedPower:
      return signedPower(of(0), value);
    case Op::atan2:
      return rangeOfAtan2(of(0), of(1));
    case Op::abs:
      return absolute(of(0));
    case Op::min:
    case Op::max:
    case Op::norm1:
    case Op::norm2:
    case Op::normInf:
      return rangeOfList(graph, op, children);
    case Op::floor:
    case Op::ceil:
    case Op::round:
    case Op::trunc:
      return rangeOfWhole(op, of(0));
    case Op::mod:
      return rangeOfMod(of(0), of(1));
    case Op::integerDivide:
      return rangeOfWhole(Op::trunc, divide(of(0), of(1)));
    case Op::piecewise:
      return rangeOfPiecewise(points, of(0));
    case Op::ifThenElse:
      return hull(of(1), of(2));
    default:
      return isTruthOperation(op) ? kTruth : rangeOfFunction(op, value, of(0));
  }
}

bool isWholeCall(const Graph& graph, Op op, double value, std::span<const NodeId> children) {
  const auto areWhole = [&](std::size_t first) {
    return std::all_of(children.begin() + static_cast<std::ptrdiff_t>(first), children.end(),
                       [&](NodeId child) { return graph.isInteger(child); });
  };
  switch (op) {
    case Op::product:
    case Op::abs:
    case Op::min:
    case Op::max:
    case Op::norm1:
    case Op::normInf:
    case Op::mod:
      return areWhole(0);
    case Op::power:
    case Op::signedPower:
      return value >= 0 && isWhole(value) && areWhole(0);
    case Op::ifThenElse:
      return areWhole(1);
    case Op::floor:
    case Op::ceil:
    case Op::round:
    case Op::trunc:
    case Op::integerDivide:
      return true;
    default:
      return isTruthOperation(op);
  }
}

// The bounds of whole numbers, computed outward, are whole.
Range finished(Interval interval, bool isInteger) {
  if (isInteger) interval = {std::ceil(interval.lower), std::floor(interval.upper)};
  return {interval, isInteger};
}

}  // namespace

Range rangeOfSum(const Graph& graph, double constant, std::span<const NodeId> children,
                 std::span<const double> coefficients) {
  Interval interval{constant, constant};
  bool isInteger = isWhole(constant);
  for (std::size_t k = 0; k < children.size(); ++k) {
    interval = add(interval, scale(graph.interval(children[k]), coefficients[k]));
    isInteger = isInteger && isWhole(coefficients[k]) && graph.isInteger(children[k]);
  }
  return finished(interval, isInteger);
}

Range rangeOfCall(const Graph& graph, Op op, double value, std::span<const NodeId> children,
                  std::span<const Point> points) {
  return finished(boundsOfCall(graph, op, value, children, points), isWholeCall(graph, op, value, children));
}

Interval wholeBounds(Interval a) {
  constexpr double kTolerance = 1e-6;
  return {std::ceil(a.lower - kTolerance), std::floor(a.upper + kTolerance)};
}

}  // namespace brel::expr
