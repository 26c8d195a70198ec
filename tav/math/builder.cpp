#include "tav/math/builder.h"

#include <cmath>

#include "tav/math/fn/abstract.h"

namespace tav::math {

void Builder::call(const fn::Abstract<double>& function, int argumentCount) {
  if (argumentCount < 1 || !function.takes(argumentCount)) return target_.addCall(function, argumentCount);
  const std::vector<double> values = target_.takeBackConstants(argumentCount);
  if (values.empty()) return target_.addCall(function, argumentCount);
  std::vector<Symbol<double>> arguments;
  arguments.reserve(values.size());
  for (const double value : values) arguments.push_back(Symbol<double>::ofConstant(value));
  const Symbol<double> result = function.evaluate(arguments);
  if (result.is(SymbolKind::kConstant) && std::isfinite(result.asConstant())) {
    return target_.addConstant(result.asConstant());
  }
  for (const double value : values) target_.addConstant(value);  // a vector, or no number
  target_.addCall(function, argumentCount);
}

}  // namespace tav::math
