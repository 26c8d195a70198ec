#pragma once

#include <vector>

#include "tav/attr/lib/optional_container.h"

namespace grb {

// A store of values by Gurobi position; an element that no block gave a value is unset.
template <class T>
tav::attr::Container<T> makeStore() {
  return tav::attr::Container<T>::template make<tav::attr::lib::OptionalContainer<T>>();
}

// What blocks brought about variables and is used after the model is built.
struct VariableStores {
  tav::attr::Container<double> level = makeStore<double>();
  tav::attr::Container<int> basis = makeStore<int>();
  tav::attr::Container<double> preference = makeStore<double>();
  tav::attr::Container<double> priority = makeStore<double>();
  std::vector<char> binary;  // by position: whether it came as one that can only be 0 or 1

  // False for a variable that no block brought.
  bool isBinary(int position) const {
    const auto i = static_cast<std::size_t>(position);
    return i < binary.size() && binary[i] != 0;
  }
};

struct RowStores {
  tav::attr::Container<double> marginal = makeStore<double>();
  tav::attr::Container<int> basis = makeStore<int>();
  tav::attr::Container<double> preference = makeStore<double>();
  // Of every row as its block gave it: the right-hand side and the sense ('G', 'L' or 'E').
  std::vector<double> sides;
  std::vector<char> senses;

  void resize(std::size_t rows) {
    sides.resize(rows);
    senses.resize(rows);
  }
};

}  // namespace grb
