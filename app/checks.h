#pragma once

#include "kavo/kavo.h"

namespace app {

// The words for what a point is checked for.
struct Check {
  int check, kind;  // a kavo_check, and the kavo_kind of its elements
  const char *what, *element;
};
inline constexpr Check kChecks[] = {{KAVO_CHECK_ROW, KAVO_ROW, "row", "row"},
                                    {KAVO_CHECK_BOUND, KAVO_COLUMN, "bound", "variable"},
                                    {KAVO_CHECK_INTEGRALITY, KAVO_COLUMN, "integrality", "variable"},
                                    {KAVO_CHECK_LOGICAL, KAVO_LOGICAL, "logical", "constraint"},
                                    {KAVO_CHECK_SET, KAVO_SET, "ordered set", "set"}};

inline constexpr double kTolerance = 1e-6;  // violations up to this size are not worth a line

}  // namespace app
