#include "brel/result/violations.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

#include "brel/host.h"

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

// Whether the column that switches a row has the value at which the row holds.
bool isOn(const kavo_rows& rows, std::size_t i, std::span<const double> point) {
  constexpr double kIntegralityTolerance = 1e-5;
  if (rows.indicator == nullptr || rows.indicator[i] < 0) return true;
  const double value = point[static_cast<std::size_t>(rows.indicator[i])];
  return std::abs(value - rows.indicator_value[i]) <= kIntegralityTolerance;
}

// The largest size of a member outside [first, last).
double largestOutside(std::span<const double> sizes, std::size_t first, std::size_t last) {
  double largest = 0;
  for (std::size_t k = 0; k < sizes.size(); ++k) {
    if (k < first || k >= last) largest = std::max(largest, sizes[k]);
  }
  return largest;
}

// The largest member that should be 0, when those that may differ from 0 are chosen best: among them is the largest.
double setViolation(unsigned char type, std::span<const double> sizes) {
  const auto top = static_cast<std::size_t>(std::max_element(sizes.begin(), sizes.end()) - sizes.begin());
  if (type == 1) return largestOutside(sizes, top, top + 1);
  return std::min(largestOutside(sizes, top, top + 2), largestOutside(sizes, top == 0 ? 0 : top - 1, top + 1));
}

Largest worstSet(const kavo_sets& sets, std::span<const double> point) {
  Largest worst;
  std::vector<double> sizes;
  for (std::size_t s = 0; s < sets.count; ++s) {
    sizes.clear();
    for (std::size_t k = sets.start[s]; k < sets.start[s + 1]; ++k) {
      sizes.push_back(std::abs(point[static_cast<std::size_t>(sets.column[k])]));
    }
    worst.take(setViolation(sets.type[s], sizes), s);
  }
  return worst;
}

}  // namespace

double largestOfBoundsAndSets(const UserModel& user, std::span<const double> point) {
  Largest worst = worstSet(user.sets, point);
  for (std::size_t j = 0; j < point.size(); ++j) worst.take(boundViolation(user.columns, j, point[j]), j);
  return worst.value;
}

void checkPoint(const UserModel& user, const rewrite::UserPoint& at) {
  const kavo_columns& columns = user.columns;
  const kavo_rows& rows = user.rows;
  const std::span<const double> point = at.point();
  Largest row, bound, integrality, logical;
  for (std::size_t i = 0; i < rows.count; ++i) {
    if (isOn(rows, i, point)) row.take(outside(at.activity(i), rows.lower[i], rows.upper[i]), i);
  }
  for (std::size_t j = 0; j < columns.count; ++j) {
    bound.take(boundViolation(columns, j, point[j]), j);
    if (isWhole(columns.type[j])) integrality.take(std::abs(point[j] - std::round(point[j])), j);
  }
  for (std::size_t k = 0; k < user.logical.count; ++k) logical.take(at.logical(k) == 1 ? 0 : 1, k);
  const auto tell = [&user](int check, const Largest& found) {
    checkHost(kavo_link_violation(user.host, check, found.value, found.element));
  };
  tell(KAVO_CHECK_ROW, row);
  tell(KAVO_CHECK_BOUND, bound);
  tell(KAVO_CHECK_INTEGRALITY, integrality);
  tell(KAVO_CHECK_LOGICAL, logical);
  tell(KAVO_CHECK_SET, worstSet(user.sets, point));
}

}  // namespace brel::result
