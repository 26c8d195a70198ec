#pragma once

#include <array>
#include <optional>
#include <vector>

#include "kavo/link.h"
#include "kavo/model/model.h"

namespace kavo {

// The kind of element that each kavo_check looks at.
inline constexpr std::array kCheckedKind{KAVO_ROW, KAVO_COLUMN, KAVO_COLUMN, KAVO_LOGICAL, KAVO_SET};

struct Violation {
  double value = 0;
  long long element = -1;
};

// What a solve has given; empty optionals: not given.
struct Results {
  kavo_finish finish{KAVO_UNKNOWN, KAVO_STOP_NOT_RUN, kUnknown, kUnknown, kUnknown, kUnknown,
                     kUnknown,     kUnknown,          kUnknown, kUnknown, kUnknown, kUnknown};
  bool finished = false;                                     // the link has closed them
  bool signalled = false;                                    // stopped by a signal
  double seconds = 0;                                        // the whole run, as the host measured it
  std::array<std::optional<std::vector<double>>, 5> values;  // by kavo_quantity
  std::optional<std::vector<int>> columnBasis, rowBasis;     // a kavo_basis each
  std::array<std::optional<Violation>, 5> violations;        // by kavo_check

  // A model without columns has a point too: the empty one.
  bool hasPoint() const { return values[KAVO_PRIMAL].has_value(); }
};

}  // namespace kavo
