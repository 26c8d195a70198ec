#include "kavo/result/relaxed.h"

#include <algorithm>
#include <cmath>

namespace kavo {

namespace {

constexpr double kCounts = 1e-9;  // smaller violations are rounding

double outside(double value, double lower, double upper) {
  return std::isnan(value) ? HUGE_VAL : std::max({lower - value, value - upper, 0.0});
}

double outsideBounds(const Columns& columns, std::size_t j, double value) {
  const unsigned char type = columns.type[j];
  const bool binary = type == KAVO_BINARY;
  const double lower = binary ? std::max(columns.lower[j], 0.0) : columns.lower[j];
  const double upper = binary ? std::min(columns.upper[j], 1.0) : columns.upper[j];
  const bool maySitAtZero = type == KAVO_SEMICONTINUOUS || type == KAVO_SEMIINTEGER;
  const double violation = outside(value, lower, upper);
  return maySitAtZero ? std::min(violation, std::fabs(value)) : violation;
}

bool isOn(const Rows& rows, std::size_t i, const std::vector<double>& point) {
  constexpr double kIntegralityTolerance = 1e-5;
  if (rows.indicator.empty() || rows.indicator[i] < 0) return true;
  const double value = point[static_cast<std::size_t>(rows.indicator[i])];
  return std::fabs(value - rows.indicatorValue[i]) <= kIntegralityTolerance;
}

}  // namespace

std::vector<Violation> violatedRows(const Model& model, const Answer& answer) {
  const Numbers &point = answer.values[KAVO_PRIMAL], &activity = answer.values[KAVO_ACTIVITY];
  std::vector<Violation> found;
  if (!point || !activity) return found;
  const Rows& rows = model.rows;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const double violation = isOn(rows, i, *point) ? outside((*activity)[i], rows.lower[i], rows.upper[i]) : 0;
    if (violation > kCounts) found.push_back({violation, static_cast<long long>(i)});
  }
  return found;
}

std::vector<Violation> violatedBounds(const Model& model, const Answer& answer) {
  const Numbers& point = answer.values[KAVO_PRIMAL];
  std::vector<Violation> found;
  if (!point) return found;
  for (std::size_t j = 0; j < point->size(); ++j) {
    const double violation = outsideBounds(model.columns, j, (*point)[j]);
    if (violation > kCounts) found.push_back({violation, static_cast<long long>(j)});
  }
  return found;
}

bool isRelaxed(const Answer& answer) { return answer.hasPoint() && !std::isnan(answer.finish.relaxation); }

}  // namespace kavo
