#pragma once

#include <cstddef>
#include <vector>

#include "kavo/kavo.h"

namespace bench {

// An LP with n columns, n rows of three terms each, and an objective over all columns: the same for the same n.
struct SyntheticLp {
  explicit SyntheticLp(std::size_t n);

  // Puts the LP into an empty model of the host. False when the host refuses.
  bool fill(trpRec* model) const;

  std::size_t columns, nonzeros;
  std::vector<double> lower, upper, cost;  // per column
  std::vector<double> rowLower, rowUpper;  // per row
  std::vector<std::size_t> start;          // rows + 1
  std::vector<int> column;
  std::vector<double> value;
  std::vector<int> costColumn;
};

}  // namespace bench
