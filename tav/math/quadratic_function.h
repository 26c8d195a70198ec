#pragma once

#include <memory>
#include <span>

#include "tav/math/linear_function.h"

namespace tav::math {

// linear + sum of values[k] * x[first[k]] * x[second[k]], over the variables of the linear part's space. A value is the
// coefficient of its product as written, neither doubled nor halved; products may repeat. A view like the linear part:
// `owner` keeps the three arrays alive; empty, somebody else does.
template <class T>
struct QuadraticFunction {
  LinearFunction<T> linear;  // the linear terms and the constant; may have no terms
  std::span<const int> first;
  std::span<const int> second;  // as many as first
  std::span<const T> values;    // as many as first
  std::shared_ptr<const void> owner;
};

}  // namespace tav::math
