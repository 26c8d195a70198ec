#pragma once

#include "grb/adder/block_reading.h"
#include "grb/adder/terms.h"
#include "tav/attr/container.h"
#include "tav/attr/lib/linear_rows_container.h"
#include "tav/math/symbol.h"

namespace grb {

// The functions of a block, known to be linear over this solver's variables, with positions of variables that exist and
// finite numbers.
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
}  // namespace grb
