#pragma once

#include <vector>

#include "grb/adder/adder.h"
#include "grb/adder/block_reading.h"
#include "tav/attr/container.h"
#include "tav/math/symbol.h"

namespace grb {

using SymbolContainer = tav::attr::Container<tav::math::Symbol<double>>;
using tav::math::LinearFunction;

// Calls use(i, symbol) for the functions of a block in order. The portions are small since a symbol is large: what is
// read together should stay in the nearest cache.
template <class Use>
void forEachFunction(const SymbolContainer& functions, int count, const Use& use) {
  forEachValue<tav::math::Symbol<double>, 32>(functions, count, use);
}

// Raises "Input not supported" unless the symbol is a linear function over this solver's variables, and a support error
// that names the element (by its number in the block) unless all positions are of variables that exist and all
// coefficients and the constant are finite: Gurobi would refuse it and discard what is queued.
void requireLinear(const tav::math::Symbol<double>& symbol, int element, const Data& data);
// The same for all functions of a block, of which there must be `count`.
void requireAllLinear(const SymbolContainer& functions, int count, const Data& data);

// Puts terms in increasing order of their positions and sums those of one position.
void mergeTerms(std::vector<int>& positions, std::vector<double>& coefficients);

}  // namespace grb
