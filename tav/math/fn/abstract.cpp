#include "tav/math/fn/abstract.h"

#include <vector>

namespace tav::math::fn {

template <class T>
Symbol<T> Abstract<T>::evaluate(std::span<const Symbol<T>> arguments) const {
  if (!takes(static_cast<int>(arguments.size()))) {
    throw CheckException::failedTrue(fmt::format("{} takes {} arguments", identifier(), arguments.size()));
  }
  std::vector<T> values;
  values.reserve(arguments.size());
  for (const Symbol<T>& argument : arguments) {
    if (argument.is(SymbolKind::kVector)) {
      const auto elements = argument.asVector()->values();
      values.insert(values.end(), elements.begin(), elements.end());
    } else {
      values.push_back(argument.asConstant());
    }
  }
  return Symbol<T>::ofConstant(value(values));
}

template class Abstract<double>;

}  // namespace tav::math::fn
