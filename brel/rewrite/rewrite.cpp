#include <fmt/core.h>

#include "brel/rewrite/rules.h"
#include "brel/rewrite/solver_model.h"

namespace brel::rewrite {
namespace {

std::string elementName(const kavo_names& names, std::size_t i, const char* kind) {
  const char* name = names.start == nullptr ? "" : names.text + names.start[i];
  return *name == '\0' ? fmt::format("{} {}", kind, i + 1) : fmt::format("{} '{}'", kind, name);
}

bool isAnyCrossed(std::span<const double> lower, std::span<const double> upper) {
  bool crossed = false;  // without a way out of the loop it runs on several elements at once
  for (std::size_t i = 0; i < lower.size(); ++i) crossed |= lower[i] > upper[i];
  return crossed;
}

// Such a model is infeasible, which the solver finds out; but only we can tell which element it is.
void noteCrossed(const kavo_names& names, const char* kind, std::span<const double> lower,
                 std::span<const double> upper, SolverModel& model) {
  if (!isAnyCrossed(lower, upper)) return;
  constexpr std::size_t kMost = 5;
  for (std::size_t i = 0; i < lower.size() && model.notes.size() < kMost; ++i) {
    if (lower[i] <= upper[i]) continue;
    model.notes.push_back(fmt::format("{}: lower bound {:.17g} is above upper bound {:.17g}: the model is infeasible",
                                      elementName(names, i, kind), lower[i], upper[i]));
  }
}

// Whether every row has one finite side, or two equal ones: such rows are sent as they are. One look at all rows, on
// several at once; most models need no other.
bool areAllPlain(const kavo_rows& rows) {
  bool plain = true;
  for (std::size_t i = 0; i < rows.count; ++i) {
    const bool hasLower = rows.lower[i] > -kUserInfinity;
    const bool hasUpper = rows.upper[i] < kUserInfinity;
    plain &= (hasLower != hasUpper) | (rows.lower[i] == rows.upper[i]);
  }
  return plain;
}

}  // namespace

SolverModel rewrite(const kavo_columns& columns, const kavo_rows& rows, Trail& trail) {
  SolverModel model(columns, rows);
  binaryColumns(columns, model, trail);
  noteCrossed(columns.names, "variable", model.lower(), model.upper(), model);
  if (areAllPlain(rows)) return model;
  noteCrossed(rows.names, "row", {rows.lower, rows.count}, {rows.upper, rows.count}, model);
  freeRows(rows, model, trail);
  rangedRows(rows, model, trail);
  return model;
}

}  // namespace brel::rewrite
