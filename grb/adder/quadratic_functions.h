#pragma once

#include "grb/adder/block_reading.h"
#include "grb/adder/terms.h"
#include "tav/math/symbol.h"

namespace grb {

// The functions of a block, known to be quadratic over this solver's variables, with positions of variables that exist
// and finite numbers.
class QuadraticFunctions {
 public:
  // Checks all functions, of which there must be `count`. Raises "Input not supported" for another kind of function (a
  // linear one too) or another variable space, the cast error for more terms than an int counts, and a support error
  // that names the element for bad terms.
  QuadraticFunctions(const tav::attr::BaseContainer& functions, int count, const Data& data);

  // Calls use(i, function) for all functions in order; each is a tav::math::QuadraticFunction<double>.
  template <class Use>
  void forEach(const Use& use) const {
    forEachValue<Symbol, kPortion>(functions_, count_,
                                   [&use](int i, const Symbol& symbol) { use(i, symbol.asQuadratic()); });
  }

 private:
  using Symbol = tav::math::Symbol<double>;
  static constexpr int kPortion = 128;

  tav::attr::Container<Symbol> functions_;
  int count_;
};

}  // namespace grb
