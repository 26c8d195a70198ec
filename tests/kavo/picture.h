#pragma once

#include <string>

#include "kavo/kavo.h"

namespace kavo_test {

// Everything of a model that a link sees, as one comparable text: a line per column, row and objective, and behind "="
// a line for each of what else there is.
std::string picture(const trpRec* model);

}  // namespace kavo_test
