#include "brel/result/violations.h"

#include <algorithm>
#include <cmath>

#include "brel/host.h"
#include "brel/rewrite/evaluate.h"

namespace brel::result {
namespace {

struct Largest {
  double value = 0;
  long long element = -1;

  // A violation that is not a number is larger than any other.
  void take(double violation, std::size_t i) {
    if (violation <= value) return;
    value = violation;
    element = static_cast<long long>(i);
  }
};

double outside(double value, double lower, double upper) {
  return std::isnan(value) ? HUGE_VAL : std::max({lower - value, value - upper, 0.0});
}

bool maySitAtZero(unsigned char type) { return type == KAVO_SEMICONTINUOUS || type == KAVO_SEMIINTEGER; }

double boundViolation(const kavo_columns& columns, std::size_t j, double value) {
  const bool binary = columns.type[j] == KAVO_BINARY;
  const double lower = binary ? std::max(columns.lower[j], 0.0) : columns.lower[j];
  const double upper = binary ? std::min(columns.upper[j], 1.0) : columns.upper[j];
  const double violation = outside(value, lower, upper);
  return maySitAtZero(columns.type[j]) ? std::min(violation, std::abs(value)) : violation;
}

bool isWhole(unsigned char type) { return type == KAVO_BINARY || type == KAVO_INTEGER || type == KAVO_SEMIINTEGER; }

}  // namespace

void checkPoint(trpRec* host, const kavo_columns& columns, const kavo_rows& rows, std::span<const double> point) {
  Largest row, bound, integrality;
  for (std::size_t i = 0; i < rows.count; ++i) {
    row.take(outside(rewrite::activity(rows, i, point), rows.lower[i], rows.upper[i]), i);
  }
  for (std::size_t j = 0; j < columns.count; ++j) {
    bound.take(boundViolation(columns, j, point[j]), j);
    if (isWhole(columns.type[j])) integrality.take(std::abs(point[j] - std::round(point[j])), j);
  }
  checkHost(kavo_link_violation(host, KAVO_CHECK_ROW, row.value, row.element));
  checkHost(kavo_link_violation(host, KAVO_CHECK_BOUND, bound.value, bound.element));
  checkHost(kavo_link_violation(host, KAVO_CHECK_INTEGRALITY, integrality.value, integrality.element));
}

}  // namespace brel::result
