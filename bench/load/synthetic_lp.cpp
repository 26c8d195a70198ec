#include "bench/load/synthetic_lp.h"

#include <limits>
#include <numeric>
#include <random>

namespace bench {

SyntheticLp::SyntheticLp(std::size_t n)
    : columns(n),
      nonzeros(3 * n),
      lower(n, 0.0),
      upper(n, std::numeric_limits<double>::infinity()),
      cost(n),
      rowLower(n),
      rowUpper(n),
      start(n + 1),
      column(3 * n),
      value(3 * n),
      costColumn(n) {
  std::mt19937 random(7);
  std::uniform_int_distribution<int> anyColumn(0, static_cast<int>(n) - 1);
  std::uniform_real_distribution<double> anyValue(1.0, 10.0);
  constexpr double kNone = std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i < n; ++i) {
    cost[i] = anyValue(random);
    const double side = anyValue(random);
    rowLower[i] = i % 3 == 1 ? -kNone : side;
    rowUpper[i] = i % 3 == 0 ? kNone : side;
    start[i + 1] = 3 * (i + 1);
    for (std::size_t k = 3 * i; k < 3 * i + 3; ++k) {
      column[k] = anyColumn(random);
      value[k] = anyValue(random);
    }
  }
  std::iota(costColumn.begin(), costColumn.end(), 0);
}

bool SyntheticLp::fill(trpRec* model) const {
  return kavo_add_columns(model, columns, lower.data(), upper.data(), nullptr, nullptr) == KAVO_OK &&
         kavo_add_rows(model, columns, rowLower.data(), rowUpper.data(), start.data(), column.data(), value.data(),
                       nullptr) == KAVO_OK &&
         kavo_add_objective(model, KAVO_MINIMIZE, 0, columns, costColumn.data(), cost.data(), nullptr) == KAVO_OK;
}

}  // namespace bench
