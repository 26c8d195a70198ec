#pragma once

#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace tav::math {

// sum of coefficients[k] * x[positions[k]] + constant, over the variables of one space. A view: a row of a compressed
// matrix is one, without a copy. `owner` keeps the arrays alive; empty, somebody else does. Copies allocate nothing.
template <class T>
struct LinearFunction {
  unsigned long long space = 0;     // identity of the variable space
  std::span<const int> positions;   // 0-based, within the space
  std::span<const T> coefficients;  // as many as positions
  T constant{};
  std::shared_ptr<const void> owner;

  int termCount() const { return static_cast<int>(positions.size()); }

  // A function that owns its terms, for those that are not rows of somebody's matrix.
  static LinearFunction owning(unsigned long long space, std::vector<int> positions, std::vector<T> coefficients,
                               T constant) {
    using Terms = std::pair<std::vector<int>, std::vector<T>>;
    const auto terms = std::make_shared<const Terms>(std::move(positions), std::move(coefficients));
    return {space, terms->first, terms->second, constant, terms};
  }
};

}  // namespace tav::math
