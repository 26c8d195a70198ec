#pragma once

#include "kavo/kavo.h"

namespace app {

// The words for what a point is checked for. Violations up to the tolerance are not worth a line: it is the one that
// the solver keeps unless told otherwise.
struct Check {
  int check, kind;  // a kavo_check, and the kavo_kind of its elements
  const char *what, *element;
  double tolerance;
};
inline constexpr Check kChecks[] = {{KAVO_CHECK_ROW, KAVO_ROW, "row", "row", 1e-6},
                                    {KAVO_CHECK_BOUND, KAVO_COLUMN, "bound", "variable", 1e-6},
                                    {KAVO_CHECK_INTEGRALITY, KAVO_COLUMN, "integrality", "variable", 1e-5},
                                    {KAVO_CHECK_LOGICAL, KAVO_LOGICAL, "logical", "constraint", 1e-6},
                                    {KAVO_CHECK_SET, KAVO_SET, "ordered set", "set", 1e-5}};

}  // namespace app
