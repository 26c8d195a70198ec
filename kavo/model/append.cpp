#include "kavo/model/append.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <utility>

#include "kavo/error.h"
#include "kavo/model/append_parts.h"

namespace kavo {

namespace {

void checkBounds(const Place& place, std::size_t count, const double* lower, const double* upper) {
  for (std::size_t i = 0; lower && i < count; ++i) checkLower(place, i, lower[i]);
  for (std::size_t i = 0; upper && i < count; ++i) checkUpper(place, i, upper[i]);
}

// The terms of one row or objective.
struct Terms {
  const int* column;
  const double* value;
  std::size_t count;

  bool increasing() const {
    return std::adjacent_find(column, column + count, [](int a, int b) { return a >= b; }) == column + count;
  }
};

void checkTerms(const Place& place, std::size_t element, const Terms& terms, std::size_t columns) {
  for (std::size_t k = 0; k < terms.count; ++k) {
    checkColumn(place, element, k, terms.column[k], columns);
    checkCoefficient(place, element, terms.value[k], terms.column[k]);
  }
}

// Appends the terms, those of one column summed into one. The column of a sum that is too large, if there is one.
std::optional<int> appendTerms(const Terms& terms, std::vector<int>& column, std::vector<double>& value) {
  const std::size_t first = column.size();
  column.insert(column.end(), terms.column, terms.column + terms.count);
  value.insert(value.end(), terms.value, terms.value + terms.count);
  if (terms.increasing()) return std::nullopt;
  std::vector<std::pair<int, std::size_t>> sorted(terms.count);  // column and position, so that sums keep their order
  for (std::size_t k = 0; k < terms.count; ++k) sorted[k] = {terms.column[k], k};
  std::sort(sorted.begin(), sorted.end());
  const auto same = [](const auto& a, const auto& b) { return a.first == b.first; };
  if (std::adjacent_find(sorted.begin(), sorted.end(), same) == sorted.end()) return std::nullopt;
  column.resize(first);
  value.resize(first);
  for (const auto& [c, k] : sorted) {
    if (column.size() > first && column.back() == c) {
      value.back() += terms.value[k];
    } else {
      column.push_back(c);
      value.push_back(terms.value[k]);
    }
  }
  for (std::size_t k = first; k < value.size(); ++k) {
    if (!(std::fabs(value[k]) < kInfinity)) return column[k];
  }
  return std::nullopt;
}

void requireSmall(const Place& place, std::size_t element, std::optional<int> column) {
  if (column) place.fail(element, fmt::format("the terms of column {} sum up to 1e20 or more", *column));
}

void appendRowTerms(Rows& rows, const RowData& data, const Place& place, std::size_t columns) {
  if (rows.column.empty() && data.count > 1) {  // given in bulk: exactly what is needed, else let the vectors grow
    rows.column.reserve(data.start[data.count]);
    rows.value.reserve(data.start[data.count]);
  }
  for (std::size_t i = 0; i < data.count; ++i) {
    const Terms terms{data.column + data.start[i], data.value + data.start[i], data.start[i + 1] - data.start[i]};
    checkTerms(place, i, terms, columns);
    requireSmall(place, i, appendTerms(terms, rows.column, rows.value));
    rows.start.push_back(rows.column.size());
  }
}

}  // namespace

void appendColumns(Model& model, const ColumnData& data) {
  Columns& columns = model.columns;
  const std::size_t present = columns.size();
  checkCount("columns", present, data.count);
  const Place place{"column", present, data.names};
  checkBounds(place, data.count, data.lower, data.upper);
  for (std::size_t i = 0; data.type && i < data.count; ++i) {
    if (data.type[i] > KAVO_SEMIINTEGER) place.fail(i, fmt::format("there is no variable type {}", data.type[i]));
  }
  const auto mark = columns.names.mark();
  const std::size_t starts = model.primalStart.size(), basis = model.columnStart.size();
  Rollback rollback([&] {
    columns.lower.resize(present);
    columns.upper.resize(present);
    columns.type.resize(present);
    columns.names.revert(mark);
    model.primalStart.resize(starts);
    model.columnStart.resize(basis);
    for (auto& start : model.mipStarts) start.resize(present);
  });
  extend(columns.lower, data.lower, data.count, 0.0);
  extend(columns.upper, data.upper, data.count, kInfinity);
  extend<unsigned char>(columns.type, data.type, data.count, KAVO_CONTINUOUS);
  appendNames(columns.names, data.names, data.count, present);
  if (starts > 0) model.primalStart.resize(present + data.count, kUnknown);
  if (basis > 0) model.columnStart.resize(present + data.count, 0);
  for (auto& start : model.mipStarts) start.resize(present + data.count, kUnknown);
  rollback.keep();
}

void appendRows(Model& model, const RowData& data) {
  Rows& rows = model.rows;
  const std::size_t present = rows.size();
  checkCount("rows", present, data.count);
  checkStarts("row", data.count, data.start);
  if (data.count > 0 && data.start[data.count] > 0 && (data.column == nullptr || data.value == nullptr)) {
    throw Error(KAVO_INVALID, "the columns or values of the row terms are null");
  }
  const Place place{"row", present, data.names};
  checkBounds(place, data.count, data.lower, data.upper);
  const auto mark = rows.names.mark();
  const std::size_t terms = rows.column.size(), expressions = rows.expression.size();
  const std::size_t starts = model.dualStart.size(), basis = model.rowStart.size();
  const std::size_t quadratics = rows.quadratic.size(), indicators = rows.indicator.size();
  Rollback rollback([&] {
    rows.start.resize(present + 1);
    rows.column.resize(terms);
    rows.value.resize(terms);
    rows.lower.resize(present);
    rows.upper.resize(present);
    rows.expression.resize(expressions);
    rows.quadratic.resize(quadratics);
    rows.indicator.resize(indicators);
    rows.indicatorValue.resize(indicators);
    rows.names.revert(mark);
    model.dualStart.resize(starts);
    model.rowStart.resize(basis);
  });
  appendRowTerms(rows, data, place, model.columns.size());
  extend(rows.lower, data.lower, data.count, -kInfinity);
  extend(rows.upper, data.upper, data.count, kInfinity);
  if (expressions > 0) rows.expression.resize(present + data.count, -1);
  if (quadratics > 0) rows.quadratic.resize(present + data.count, -1);
  if (indicators > 0) {
    rows.indicator.resize(present + data.count, -1);
    rows.indicatorValue.resize(present + data.count, 0);
  }
  appendNames(rows.names, data.names, data.count, present);
  if (starts > 0) model.dualStart.resize(present + data.count, kUnknown);
  if (basis > 0) model.rowStart.resize(present + data.count, 0);
  rollback.keep();
}

void appendObjective(Model& model, const ObjectiveData& data) {
  const Place place{"objective", model.objectives.size(), data.name ? &data.name : nullptr};
  if (data.sense != KAVO_MINIMIZE && data.sense != KAVO_MAXIMIZE) {
    place.fail(0, fmt::format("the sense must be 0 (minimise) or 1 (maximise), not {}", data.sense));
  }
  checkConstant(place, 0, data.constant);
  if (data.terms > 0 && (data.column == nullptr || data.value == nullptr))
    place.fail(0, "the columns or values of its terms are null");
  const Terms terms{data.column, data.value, data.terms};
  checkTerms(place, 0, terms, model.columns.size());
  Objective objective;
  objective.sense = data.sense;
  objective.constant = data.constant;
  if (data.name) objective.name = data.name;
  if (data.terms > 0) requireSmall(place, 0, appendTerms(terms, objective.column, objective.value));
  model.objectives.push_back(std::move(objective));
}

}  // namespace kavo
