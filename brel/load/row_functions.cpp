#include "brel/load/row_functions.h"

#include "tav/idx/visit.h"

namespace brel::load {

RowFunctions::Symbol RowFunctions::get(int index, int /*solution*/) const {
  return function(static_cast<std::size_t>(index));
}

void RowFunctions::get(const tav::idx::List& list, std::span<Symbol> values, int /*solution*/) const {
  tav::idx::visit(list, [&](int k, int index) {
    values[static_cast<std::size_t>(k)] = function(static_cast<std::size_t>(index));
  });
}

RowFunctions::Symbol RowFunctions::function(std::size_t row) const {
  const int own = model_.ownTerms.empty() ? -1 : model_.ownTerms[row];
  const bool isOwn = own >= 0;
  const auto entry = static_cast<std::size_t>(isOwn ? own : model_.userRow[row]);
  const std::size_t* start = isOwn ? model_.own.start.data() : rows_.start;
  const std::size_t first = start[entry];
  const std::size_t count = start[entry + 1] - first;
  tav::math::LinearFunction<double> linear;
  linear.space = space_;
  linear.positions = {(isOwn ? model_.own.column.data() : rows_.column) + first, count};
  linear.coefficients = {(isOwn ? model_.own.value.data() : rows_.value) + first, count};
  linear.constant = -model_.side[row];
  return Symbol::ofLinear(std::move(linear));
}

}  // namespace brel::load
