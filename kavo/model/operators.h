#pragma once

#include <string_view>

#include "kavo/kavo.h"

namespace kavo {

using Operator = kavo_operator;

// How many operands an operator takes; -1: as many as the node's index says, -2: no operator.
int arity(int op);
// The operator's name for messages, such as "atan2"; "" for a number that is no operator. A NUL follows the text.
std::string_view operatorName(int op);

}  // namespace kavo
