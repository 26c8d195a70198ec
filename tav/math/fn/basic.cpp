#include "tav/math/fn/basic.h"

#include <cmath>
#include <numeric>

namespace tav::math::fn {

namespace {

template <class Better>
double select(std::span<const double> values, Better better) {
  double chosen = values[0];
  for (const double value : values) {
    if (std::isnan(value)) return value;
    if (better(value, chosen)) chosen = value;
  }
  return chosen;
}

}  // namespace

double Add::value(std::span<const double> arguments) const {
  return std::accumulate(arguments.begin(), arguments.end(), 0.0);
}

double Subtract::value(std::span<const double> arguments) const { return arguments[0] - arguments[1]; }

double Multiply::value(std::span<const double> arguments) const { return arguments[0] * arguments[1]; }

double Divide::value(std::span<const double> arguments) const { return arguments[0] / arguments[1]; }

double Negate::value(std::span<const double> arguments) const { return -arguments[0]; }

double Abs::value(std::span<const double> arguments) const { return std::fabs(arguments[0]); }

double Min::value(std::span<const double> arguments) const {
  return select(arguments, [](double a, double b) { return a < b; });
}

double Max::value(std::span<const double> arguments) const {
  return select(arguments, [](double a, double b) { return a > b; });
}

}  // namespace tav::math::fn
