#pragma once

#include <span>
#include <vector>

#include "grb/adder/adder.h"
#include "grb/adder/block_reading.h"
#include "tav/attr/container.h"
#include "tav/attr/lib/linear_rows_container.h"
#include "tav/math/symbol.h"

namespace grb {

// One linear function of a block. The arrays are the block's own; Gurobi copies them and changes nothing.
struct LinearTerms {
  std::span<const int> positions;
  std::span<const double> coefficients;
  double constant;
};

// The functions of a block, known to be linear over this solver's variables, with positions of variables that exist and
// finite numbers: anything else would make Gurobi refuse a call and discard what is queued.
class LinearFunctions {
 public:
  // Checks all functions, of which there must be `count`. Raises "Input not supported" for another kind of function or
  // another variable space, and a support error that names the element (by its number in the block) for bad terms.
  LinearFunctions(const tav::attr::BaseContainer& functions, int count, const Data& data);

  // Calls use(i, terms) for all functions in order. Compressed rows are looked at where they stand, symbols are read in
  // portions.
  template <class Use>
  void forEach(const Use& use) const;

 private:
  using Symbol = tav::math::Symbol<double>;
  static constexpr int kPortion = 128;

  tav::attr::Container<Symbol> functions_;
  const tav::attr::lib::LinearRows* rows_ = nullptr;  // null: the functions are symbols of any make
  int count_;
};

template <class Use>
void LinearFunctions::forEach(const Use& use) const {
  if (rows_ != nullptr) {
    const auto rows = *rows_;
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const std::size_t first = rows.start[i];
      const std::size_t terms = rows.start[i + 1] - first;
      use(static_cast<int>(i),
          LinearTerms{
              {rows.positions.data() + first, terms}, {rows.coefficients.data() + first, terms}, rows.constants[i]});
    }
    return;
  }
  forEachValue<Symbol, kPortion>(functions_, count_, [&use](int i, const Symbol& symbol) {
    const auto& function = symbol.asLinear();
    use(i, LinearTerms{function.positions, function.coefficients, function.constant});
  });
}

// Puts terms in increasing order of their positions and sums those of one position.
void mergeTerms(std::vector<int>& positions, std::vector<double>& coefficients);

}  // namespace grb
