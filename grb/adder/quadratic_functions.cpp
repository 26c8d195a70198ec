#include "grb/adder/quadratic_functions.h"

namespace grb {

QuadraticFunctions::QuadraticFunctions(const tav::attr::BaseContainer& functions, int count, const Data& data)
    : functions_(functions.as<Symbol>()), count_(count) {
  requireSupported(functions_.size() == count);
  const int variables = data.variables.count();
  forEachValue<Symbol, kPortion>(functions_, count, [&](int i, const Symbol& symbol) {
    requireSupported(symbol.is(tav::math::SymbolKind::kQuadratic) &&
                     symbol.asQuadratic().linear.space == data.variableSpace());
    requireSound(symbol.asQuadratic(), i, variables);
  });
}

}  // namespace grb
