#pragma once

#include <array>
#include <limits>
#include <optional>
#include <vector>

#include "kavo/link.h"

namespace kavo {

struct Violation {
  double value = 0;
  long long element = -1;
};

inline constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

// What a solve has given; empty optionals: not given.
struct Results {
  kavo_finish finish{KAVO_UNKNOWN, KAVO_STOP_NOT_RUN, kNoNumber, kNoNumber, kNoNumber,
                     kNoNumber,    kNoNumber,         kNoNumber, kNoNumber};
  bool finished = false;                                     // the link has closed them
  bool signalled = false;                                    // stopped by a signal
  double seconds = 0;                                        // the whole run, as the host measured it
  std::array<std::optional<std::vector<double>>, 5> values;  // by kavo_quantity
  std::optional<std::vector<int>> columnBasis, rowBasis;     // a kavo_basis each
  std::array<std::optional<Violation>, 3> violations;        // by kavo_check

  // A model without columns has a point too: the empty one.
  bool hasPoint() const { return values[KAVO_PRIMAL].has_value(); }
};

}  // namespace kavo
