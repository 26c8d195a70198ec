#include "tav/math/fn/structural.h"

#include <limits>
#include <numeric>
#include <vector>

namespace tav::math::fn {

double Vectorize::value(std::span<const double> /*arguments*/) const {
  return std::numeric_limits<double>::quiet_NaN();
}

Symbol<double> Vectorize::evaluate(std::span<const Symbol<double>> arguments) const {
  std::vector<double> values;
  values.reserve(arguments.size());
  for (const auto& argument : arguments) values.push_back(argument.asConstant());
  return Symbol<double>::ofVector(std::make_shared<const Vector<double>>(std::move(values)));
}

double Linear::value(std::span<const double> arguments) const {
  return std::accumulate(arguments.begin(), arguments.end(), 0.0);
}

Symbol<double> Linear::evaluate(std::span<const Symbol<double>> arguments) const {
  if (arguments.size() != 3) throw CheckException::failedEqualTo("arguments.size()", arguments.size(), 3);
  const LinearFunction<double>& function = arguments[0].asLinear();
  const auto values = arguments[1].asVector()->values();
  if (values.size() != function.coefficients.size()) {
    throw CheckException::failedEqualTo("values.size()", values.size(), {"terms", function.coefficients.size()});
  }
  const double terms = std::inner_product(values.begin(), values.end(), function.coefficients.begin(), 0.0);
  return Symbol<double>::ofConstant(terms + function.constant + arguments[2].asConstant());
}

}  // namespace tav::math::fn
