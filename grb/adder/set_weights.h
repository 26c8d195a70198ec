#pragma once

#include <algorithm>
#include <functional>
#include <span>
#include <vector>

#include "grb/adder/linear_functions.h"

namespace grb {

// A value that stands more than once, or null. Sorts, into `sorted`, only what does not increase as it is.
template <class T>
const T* repeatedValue(std::span<const T> values, std::vector<T>& sorted) {
  if (std::adjacent_find(values.begin(), values.end(), std::greater_equal<>()) == values.end()) return nullptr;
  sorted.assign(values.begin(), values.end());
  std::sort(sorted.begin(), sorted.end());
  const auto found = std::adjacent_find(sorted.begin(), sorted.end());
  return found == sorted.end() ? nullptr : &*found;
}

// The weights that a block of ordered sets brings for the members, or not. Gurobi takes any: a NaN would give a set
// some other order, and members of equal weights stay in the order of the call.
class SetWeights {
 public:
  // given: empty, or a symbol per set as RowQuantity::weights tells. types: Gurobi's. Raises "Input not supported" for
  // other symbols, and a support error that names the set unless its weights are finite, as many as its members and,
  // one by one for a set of type 2, all different.
  SetWeights(const tav::attr::BaseContainer& given, const LinearFunctions& members, std::span<const int> types);

  // One per member of a set, or none.
  std::span<const double> of(int set) const;

 private:
  std::vector<double> values_;
  std::vector<std::size_t> ends_;  // of each set in values_; empty when nothing was given
};

}  // namespace grb
