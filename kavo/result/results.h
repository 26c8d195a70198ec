#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "kavo/link.h"

namespace kavo {

struct Violation {
  double value = 0;
  long long element = -1;
};

// What a solve has given. Empty vectors: not given.
struct Results {
  kavo_finish finish{};
  double seconds = 0;                           // the whole run, as the host measured it
  std::array<std::vector<double>, 5> values;    // by kavo_quantity
  std::vector<int> columnBasis, rowBasis;       // a kavo_basis each
  std::array<std::optional<Violation>, 3> violations;  // by kavo_check
  std::vector<std::string> notes;
  bool signalled = false;  // stopped by a signal

  const std::vector<double>& primal() const { return values[KAVO_PRIMAL]; }
};

}  // namespace kavo
