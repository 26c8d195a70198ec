#include "kavo/model/statistics.h"

#include <algorithm>
#include <cmath>

namespace kavo {

namespace {

void take(kavo_range& range, double value) {
  const double size = std::fabs(value);
  if (size == 0 || size >= kInfinity) return;
  range.smallest = range.largest == 0 ? size : std::min(range.smallest, size);
  range.largest = std::max(range.largest, size);
}

kavo_range rangeOf(const std::vector<double>& values) {
  kavo_range range{};
  for (const double value : values) take(range, value);
  return range;
}

kavo_range rangeOf(const std::vector<double>& lower, const std::vector<double>& upper) {
  kavo_range range = rangeOf(lower);
  for (const double value : upper) take(range, value);
  return range;
}

// Takes the terms of quadratic sum number q, if there is one.
void takeQuadratic(kavo_range& range, const Quadratics& all, int q) {
  if (q < 0) return;
  const auto sum = static_cast<std::size_t>(q);
  for (std::size_t k = all.start[sum]; k < all.start[sum + 1]; ++k) take(range, all.value[k]);
}

std::size_t nonzeros(const std::vector<double>& values) {
  return values.size() - static_cast<std::size_t>(std::count(values.begin(), values.end(), 0.0));
}

// Whether element i has a part, in a list that is empty when none has.
bool has(const std::vector<int>& parts, std::size_t i) { return !parts.empty() && parts[i] >= 0; }

// The number that counts a row with linear terms alone.
std::size_t& sidesOf(kavo_statistics& all, double lower, double upper) {
  const bool isBelow = lower > -kInfinity, isAbove = upper < kInfinity;
  if (!isBelow && !isAbove) return all.free_rows;
  if (!isBelow || !isAbove) return all.inequalities;
  return lower == upper ? all.equalities : all.ranges;
}

void countRows(const Rows& rows, kavo_statistics& all) {
  all.rows = rows.size();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (has(rows.indicator, i)) {
      ++all.switched_rows;
    } else if (has(rows.expression, i)) {
      ++all.nonlinear_rows;
    } else if (has(rows.quadratic, i)) {
      ++all.quadratic_rows;
    } else {
      ++sidesOf(all, rows.lower[i], rows.upper[i]);
    }
  }
}

}  // namespace

kavo_statistics statistics(const Model& model, std::size_t solved) {
  kavo_statistics all{};
  for (const unsigned char type : model.columns.type) ++all.columns[type];
  countRows(model.rows, all);
  all.logical = model.logical.size();
  all.sets1 = static_cast<std::size_t>(std::count(model.sets.type.begin(), model.sets.type.end(), 1));
  all.sets2 = model.sets.size() - all.sets1;
  all.objectives = model.objectives.size();
  all.nonzeros = nonzeros(model.rows.value);
  all.quadratic_terms = model.quadratics.value.size();
  all.nodes = model.expressions.op.size();
  all.coefficients = rangeOf(model.rows.value);
  for (const int quadratic : model.rows.quadratic) takeQuadratic(all.coefficients, model.quadratics, quadratic);
  if (solved < model.objectives.size()) {
    all.objective = rangeOf(model.objectives[solved].value);
    takeQuadratic(all.objective, model.quadratics, model.objectives[solved].quadratic);
  }
  all.bounds = rangeOf(model.columns.lower, model.columns.upper);
  all.sides = rangeOf(model.rows.lower, model.rows.upper);
  return all;
}

}  // namespace kavo
