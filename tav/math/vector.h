#pragma once

#include <span>
#include <utility>
#include <vector>

namespace tav::math {

// A vector-valued object: the coefficients of a polynomial, the operands of a norm. Shared by symbols, so it does not
// change.
template <class T>
class Vector {
 public:
  Vector() = default;
  explicit Vector(std::vector<T> values) : values_(std::move(values)) {}

  int size() const { return static_cast<int>(values_.size()); }
  std::span<const T> values() const { return values_; }

 private:
  std::vector<T> values_;
};

}  // namespace tav::math
