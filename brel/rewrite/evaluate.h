#pragma once

#include <cstddef>
#include <span>

#include "kavo/link.h"

namespace brel::rewrite {

// The activity of a user's row at a point (one value per column or more).
inline double activity(const kavo_rows& rows, std::size_t row, std::span<const double> point) {
  double sum = 0;
  for (std::size_t k = rows.start[row]; k < rows.start[row + 1]; ++k) {
    sum += rows.value[k] * point[static_cast<std::size_t>(rows.column[k])];
  }
  return sum;
}

}  // namespace brel::rewrite
