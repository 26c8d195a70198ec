#include "grb/adder/linear_functions.h"

#include <limits>

namespace grb {
namespace {

const tav::attr::lib::LinearRows* rowsOf(const tav::attr::BaseContainer& functions) {
  const auto* compressed = dynamic_cast<const tav::attr::lib::LinearRowsContainer*>(functions.pointer().get());
  return compressed == nullptr ? nullptr : &compressed->rows();
}

}  // namespace

LinearFunctions::LinearFunctions(const tav::attr::BaseContainer& functions, int count, const Data& data)
    : functions_(functions.as<Symbol>()), rows_(rowsOf(functions)), count_(count) {
  requireSupported(functions_.size() == count);
  const int variables = data.variables.count();
  if (rows_ != nullptr) {
    requireSupported(rows_->space == data.variableSpace());
    const bool fewTerms = rows_->positions.size() <= std::size_t{std::numeric_limits<int>::max()};
    const bool sound =
        areFinite(rows_->coefficients) && areFinite(rows_->constants) && arePositions(rows_->positions, variables);
    if (fewTerms && sound) return;
  } else {
    for (int i = 0; i < count; ++i) {
      const Symbol symbol = functions_.get(i);
      requireSupported(symbol.is(tav::math::SymbolKind::kLinear) && symbol.asLinear().space == data.variableSpace());
    }
  }
  forEach([variables](int i, const LinearTerms& terms) { requireSound(terms, i, variables); });
}

}  // namespace grb
