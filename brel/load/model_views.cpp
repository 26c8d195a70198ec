#include "brel/load/model_views.h"

#include <memory>
#include <vector>

#include "tav/attr/lib/linear_rows_container.h"
#include "tav/idx/visit.h"

namespace brel::load {
namespace {

// values[k] = valueOf(element k of the list).
template <class T, class ValueOf>
void fill(const tav::idx::List& list, std::span<T> values, const ValueOf& valueOf) {
  tav::idx::visit(
      list, [&](int k, int index) { values[static_cast<std::size_t>(k)] = valueOf(static_cast<std::size_t>(index)); });
}

tav::math::Symbol<double> functionOf(const rewrite::SolverModel& model, std::size_t row, std::uint64_t space) {
  const auto [columns, values] = model.terms(row);
  return tav::math::Symbol<double>::ofLinear({space, columns, values, -model.side(row), nullptr});
}

}  // namespace

int ColumnTypes::get(int index, int /*solution*/) const {
  return static_cast<int>(model_.columnType(static_cast<std::size_t>(index)));
}

void ColumnTypes::get(const tav::idx::List& list, std::span<int> values, int /*solution*/) const {
  fill(list, values, [this](std::size_t column) { return static_cast<int>(model_.columnType(column)); });
}

int RowTypes::get(int index, int /*solution*/) const {
  return static_cast<int>(model_.rowType(static_cast<std::size_t>(index)));
}

void RowTypes::get(const tav::idx::List& list, std::span<int> values, int /*solution*/) const {
  fill(list, values, [this](std::size_t row) { return static_cast<int>(model_.rowType(row)); });
}

RowFunctions::Symbol RowFunctions::get(int index, int /*solution*/) const {
  return functionOf(model_, static_cast<std::size_t>(index), space_);
}

void RowFunctions::get(const tav::idx::List& list, std::span<Symbol> values, int /*solution*/) const {
  fill(list, values, [this](std::size_t row) { return functionOf(model_, row, space_); });
}

tav::attr::BaseContainer rowFunctions(const rewrite::SolverModel& model, const kavo_rows& rows, std::uint64_t space) {
  if (!model.areRowsUntouched()) return std::make_shared<RowFunctions>(model, space);
  const auto constants = std::make_shared<std::vector<double>>(rows.count);
  for (std::size_t i = 0; i < rows.count; ++i) (*constants)[i] = -model.side(i);
  const std::size_t nonzeros = rows.start[rows.count];
  const tav::attr::lib::LinearRows all{
      space, {rows.start, rows.count + 1}, {rows.column, nonzeros}, {rows.value, nonzeros}, *constants};
  return std::make_shared<tav::attr::lib::LinearRowsContainer>(all, constants);
}

}  // namespace brel::load
