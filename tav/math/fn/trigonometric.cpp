#include "tav/math/fn/trigonometric.h"

#include <cmath>

namespace tav::math::fn {

double Sin::value(std::span<const double> arguments) const { return std::sin(arguments[0]); }

double Cos::value(std::span<const double> arguments) const { return std::cos(arguments[0]); }

double Tan::value(std::span<const double> arguments) const { return std::tan(arguments[0]); }

double TanH::value(std::span<const double> arguments) const { return std::tanh(arguments[0]); }

}  // namespace tav::math::fn
