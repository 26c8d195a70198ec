// Spans as the C interface wants them.
#pragma once

#include <span>
#include <type_traits>

namespace grb {

/// The length. Whoever made the span has seen to it that it fits.
template <typename T>
int count(std::span<T> values) {
  return static_cast<int>(values.size());
}

/// The address, null for an empty span: "not given" to Gurobi. Gurobi does not write to its input arrays, but most of
/// its functions do not say so in their types.
template <typename T>
std::remove_const_t<T>* data(std::span<T> values) {
  return values.empty() ? nullptr : const_cast<std::remove_const_t<T>*>(values.data());
}

}  // namespace grb
