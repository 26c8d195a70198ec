#pragma once

#include <string>

#include "brel/rewrite/beyond.h"

namespace brel_test {

/// What the rules made, a line per column, row and set, for comparisons: "x2 in [0, 5] whole", "2 x0 - x2 >= 1",
/// "x2 = 1: x0 <= 3", "x2 = max(x0, x1)". firstColumn: the number of the first auxiliary column.
std::string textOf(const brel::rewrite::Beyond& beyond, int firstColumn);

}  // namespace brel_test
