#include "brel/expr/operation.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "tav/math/fn/catalogue.h"

namespace brel::expr {

namespace {

namespace fn = tav::math::fn;
using Values = std::span<const double>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

bool isTrue(double value) { return value > 0.5; }

template <class Function>
double of(Values arguments) {
  return fn::the<Function>().value(arguments);
}

template <class Function>
double of(double argument, double parameter) {
  const double both[]{argument, parameter};
  return fn::the<Function>().value(both);
}

double truth(bool value, double argument) { return std::isnan(argument) ? kNaN : value ? 1 : 0; }

// The points are cut into pieces; x lies on the last one that starts below it. At a jump that is the one before it.
double piecewise(std::span<const Point> points, double x) {
  if (points.size() == 1) return points[0].y;
  const auto right = std::lower_bound(points.begin() + 1, points.end() - 1, x,
                                      [](const Point& point, double place) { return point.x < place; });
  const Point &b = *right, &a = *(right - 1);
  if (x == b.x) return b.y;
  const double slope = b.x > a.x ? (b.y - a.y) / (b.x - a.x) : 0;
  if (slope == 0) return std::isnan(x) ? kNaN : a.y;
  return x > b.x ? b.y + (x - b.x) * slope : a.y + (x - a.x) * slope;
}

double truncated(double x, double tolerance) { return x < 0 ? std::ceil(x - tolerance) : std::floor(x + tolerance); }

double remainder(Values x, double tolerance) {
  return tolerance == 0 ? std::fmod(x[0], x[1]) : x[0] - x[1] * truncated(x[0] / x[1], tolerance);
}

double allDifferent(Values values, double tolerance) {
  std::vector<double> sorted(values.begin(), values.end());
  if (std::any_of(sorted.begin(), sorted.end(), [](double x) { return std::isnan(x); })) return kNaN;
  std::sort(sorted.begin(), sorted.end());
  const auto close = [tolerance](double a, double b) { return b - a <= tolerance; };
  return std::adjacent_find(sorted.begin(), sorted.end(), close) == sorted.end() ? 1 : 0;
}

double applyTruth(Op op, Values x, double tolerance) {
  switch (op) {
    case Op::lessEqual:
      return truth(x[0] <= tolerance, x[0]);
    case Op::less:
      return truth(x[0] < -tolerance, x[0]);
    case Op::equal:
      return truth(std::fabs(x[0]) <= tolerance, x[0]);
    case Op::logicalNot:
      return truth(!isTrue(x[0]), x[0]);
    case Op::logicalAnd:  // one that is false decides, whatever the others are
      return std::find(x.begin(), x.end(), 0.0) != x.end() ? 0 : of<fn::BoolAnd>(x);
    case Op::logicalOr:
      return std::any_of(x.begin(), x.end(), isTrue) ? 1 : of<fn::BoolOr>(x);
    case Op::ifAndOnlyIf:
      return truth(isTrue(x[0]) == isTrue(x[1]), x[0] + x[1]);
    case Op::allDifferent:
      return allDifferent(x, tolerance);
    default:
      return kNaN;
  }
}

// Functions of one argument.
double applyFunction(Op op, double value, Values x, double tolerance) {
  switch (op) {
    case Op::sqrt:
      return std::sqrt(x[0]);
    case Op::exp:
      return std::exp(x[0]);
    case Op::log:
      return std::log(x[0]);
    case Op::log2:
      return std::log2(x[0]);
    case Op::log10:
      return std::log10(x[0]);
    case Op::logBase:
      return of<fn::LogBase>(x[0], value);
    case Op::sigmoid:
      return of<fn::Sigmoid>(x);
    case Op::tanh:
      return std::tanh(x[0]);
    case Op::sin:
      return std::sin(x[0]);
    case Op::cos:
      return std::cos(x[0]);
    case Op::tan:
      return std::tan(x[0]);
    case Op::asin:
      return std::asin(x[0]);
    case Op::acos:
      return std::acos(x[0]);
    case Op::atan:
      return std::atan(x[0]);
    case Op::sinh:
      return std::sinh(x[0]);
    case Op::cosh:
      return std::cosh(x[0]);
    case Op::asinh:
      return std::asinh(x[0]);
    case Op::acosh:
      return std::acosh(x[0]);
    case Op::atanh:
      return std::atanh(x[0]);
    case Op::abs:
      return std::fabs(x[0]);
    case Op::floor:
      return std::floor(x[0] + tolerance);
    case Op::ceil:
      return std::ceil(x[0] - tolerance);
    case Op::round:
      return std::round(x[0]);
    case Op::trunc:
      return truncated(x[0], tolerance);
    default:
      return kNaN;
  }
}

}  // namespace

std::string_view operationName(Op op) {
  static constexpr std::string_view kNames[]{"constant",
                                             "variable",
                                             "sum",
                                             "product",
                                             "divide",
                                             "power",
                                             "exponential",
                                             "general power",
                                             "signed power",
                                             "sqrt",
                                             "exp",
                                             "log",
                                             "log2",
                                             "log10",
                                             "logarithm to a base",
                                             "sigmoid",
                                             "tanh",
                                             "sin",
                                             "cos",
                                             "tan",
                                             "asin",
                                             "acos",
                                             "atan",
                                             "sinh",
                                             "cosh",
                                             "asinh",
                                             "acosh",
                                             "atanh",
                                             "atan2",
                                             "abs",
                                             "min",
                                             "max",
                                             "norm1",
                                             "norm2",
                                             "infinity norm",
                                             "floor",
                                             "ceil",
                                             "round",
                                             "trunc",
                                             "mod",
                                             "div",
                                             "piecewise-linear",
                                             "if",
                                             "<=",
                                             "<",
                                             "=",
                                             "not",
                                             "and",
                                             "or",
                                             "<==>",
                                             "alldiff"};
  static_assert(std::size(kNames) == static_cast<std::size_t>(Op::allDifferent) + 1);
  return kNames[static_cast<std::size_t>(op)];
}

double apply(Op op, double value, Values x, std::span<const Point> points, double tolerance) {
  switch (op) {
    case Op::product:
      return x[0] * x[1];
    case Op::divide:
      return x[0] / x[1];
    case Op::power:
      return of<fn::Power>(x[0], value);
    case Op::exponential:
      return of<fn::Power>(value, x[0]);
    case Op::generalPower:
      return of<fn::Power>(x);
    case Op::signedPower:
      return of<fn::SignPower>(x[0], value);
    case Op::atan2:
      return std::atan2(x[0], x[1]);
    case Op::min:
      return of<fn::Min>(x);
    case Op::max:
      return of<fn::Max>(x);
    case Op::norm1:
      return of<fn::Norm1>(x);
    case Op::norm2:
      return of<fn::Norm2>(x);
    case Op::normInf:
      return of<fn::NormInf>(x);
    case Op::mod:
      return remainder(x, tolerance);
    case Op::integerDivide:
      return truncated(x[0] / x[1], tolerance);
    case Op::piecewise:
      return piecewise(points, x[0]);
    case Op::ifThenElse:
      return std::isnan(x[0]) ? kNaN : isTrue(x[0]) ? x[1] : x[2];
    default:
      return isTruthOperation(op) ? applyTruth(op, x, tolerance) : applyFunction(op, value, x, tolerance);
  }
}

}  // namespace brel::expr
