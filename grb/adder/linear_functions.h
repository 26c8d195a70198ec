#pragma once

#include <algorithm>
#include <array>
#include <span>
#include <vector>

#include "grb/adder/adder.h"
#include "tav/attr/container.h"
#include "tav/math/symbol.h"

namespace grb {

using SymbolContainer = tav::attr::Container<tav::math::Symbol<double>>;
using tav::math::LinearFunction;

// Calls use(i, symbol) for the functions of a block in order. They are read in portions: a call per portion, not per row.
template <class Use>
void forEachFunction(const SymbolContainer& functions, int count, const Use& use) {
  constexpr int kPortion = 256;
  std::array<tav::math::Symbol<double>, kPortion> portion;
  for (int first = 0; first < count; first += kPortion) {
    const int size = std::min(kPortion, count - first);
    functions.get(tav::idx::lib::Range(first, size), std::span(portion).first(static_cast<std::size_t>(size)));
    for (int k = 0; k < size; ++k) use(first + k, portion[static_cast<std::size_t>(k)]);
  }
}

// Raises "Input not supported" unless the symbol is a linear function over this solver's variables, and a support error
// that names the element (by its number in the block) unless all positions are of variables that exist and all
// coefficients and the constant are finite: Gurobi would refuse it and discard what is queued.
void requireLinear(const tav::math::Symbol<double>& symbol, int element, const Data& data);
// The same for all functions of a block, of which there must be `count`.
void requireAllLinear(const SymbolContainer& functions, int count, const Data& data);

// The terms of one function at a time, in arrays that Gurobi may take. One instance serves a whole block.
class Terms {
 public:
  void load(const LinearFunction<double>& function) {
    positions_.assign(function.positions.begin(), function.positions.end());
    coefficients_.assign(function.coefficients.begin(), function.coefficients.end());
  }
  std::span<const int> positions() const { return positions_; }
  std::span<const double> coefficients() const { return coefficients_; }

 private:
  std::vector<int> positions_;
  std::vector<double> coefficients_;
};

// Puts terms in increasing order of their positions and sums those of one position.
void mergeTerms(std::vector<int>& positions, std::vector<double>& coefficients);

}  // namespace grb
