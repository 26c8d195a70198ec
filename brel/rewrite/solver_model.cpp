#include "brel/rewrite/solver_model.h"

#include <fmt/core.h>

#include <numeric>

#include "brel/rewrite/rules.h"

namespace brel::rewrite {
namespace {

using tav::opt::RowType;
using tav::opt::VariableType;

int columnType(unsigned char type) {
  switch (type) {
    case KAVO_INTEGER: return static_cast<int>(VariableType::integer);
    case KAVO_SEMICONTINUOUS: return static_cast<int>(VariableType::semicontinuous);
    case KAVO_SEMIINTEGER: return static_cast<int>(VariableType::semiinteger);
    default: return static_cast<int>(VariableType::continuous);  // a binary's type is the business of its rule
  }
}

void takeColumns(const kavo_columns& columns, SolverModel& model) {
  model.userColumns = columns.count;
  model.columnType.resize(columns.count);
  model.lower.resize(columns.count);
  model.upper.resize(columns.count);
  for (std::size_t j = 0; j < columns.count; ++j) {
    model.columnType[j] = columnType(columns.type[j]);
    model.lower[j] = columns.lower[j] <= -kUserInfinity ? -kInfinity : columns.lower[j];
    model.upper[j] = columns.upper[j] >= kUserInfinity ? kInfinity : columns.upper[j];
  }
}

// A row with one side, or two equal ones, as the solver knows it; a ranged row is its rule's.
void takeSides(const kavo_rows& rows, SolverModel& model) {
  const std::size_t n = model.userRow.size();
  model.rowType.resize(n);
  model.side.resize(n);
  for (std::size_t r = 0; r < n; ++r) {
    const auto user = static_cast<std::size_t>(model.userRow[r]);
    const double lower = rows.lower[user];
    const double upper = rows.upper[user];
    RowType type = RowType::equal;
    if (lower <= -kUserInfinity) type = RowType::lessOrEqual;
    if (upper >= kUserInfinity) type = RowType::greaterOrEqual;
    model.rowType[r] = static_cast<int>(type);
    model.side[r] = type == RowType::lessOrEqual ? upper : lower;
  }
}

std::string elementName(const kavo_names& names, std::size_t i, const char* kind) {
  const char* name = names.start == nullptr ? "" : names.text + names.start[i];
  return *name == '\0' ? fmt::format("{} {}", kind, i + 1) : fmt::format("{} '{}'", kind, name);
}

// Such a model is infeasible, which the solver finds out; but only we can tell which element it is.
void noteCrossedBounds(const kavo_columns& columns, const kavo_rows& rows, SolverModel& model) {
  constexpr std::size_t kMost = 5;
  const auto note = [&](const kavo_names& names, std::size_t i, const char* kind, double lower, double upper) {
    if (lower <= upper || model.notes.size() >= kMost) return;
    model.notes.push_back(fmt::format("{}: lower bound {:.17g} is above upper bound {:.17g}: the model is infeasible",
                                      elementName(names, i, kind), lower, upper));
  };
  for (std::size_t j = 0; j < columns.count; ++j) note(columns.names, j, "variable", model.lower[j], model.upper[j]);
  for (std::size_t i = 0; i < rows.count; ++i) note(rows.names, i, "row", rows.lower[i], rows.upper[i]);
}

}  // namespace

SolverModel rewrite(const kavo_columns& columns, const kavo_rows& rows, Trail& trail) {
  SolverModel model;
  takeColumns(columns, model);
  binaryColumns(columns, model, trail);
  model.userRow.resize(rows.count);
  std::iota(model.userRow.begin(), model.userRow.end(), 0);
  freeRows(rows, model, trail);
  takeSides(rows, model);
  rangedRows(rows, model, trail);
  noteCrossedBounds(columns, rows, model);
  return model;
}

}  // namespace brel::rewrite
