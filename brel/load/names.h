#pragma once

#include <span>
#include <string>
#include <vector>

#include "kavo/link.h"

namespace brel::load {

// The names that are sent to the solver, one per element; "" for an element without a name or with one that the solver
// would refuse or garble (longer than 255 bytes, blanks, control characters, not UTF-8). Empty when no element has one.
// The pointers borrow from the host and from `auxiliary`.
struct SentNames {
  std::vector<const char*> names;
  std::size_t withheld = 0;
};

// of: the host's names of elements 0 .. count-1; auxiliary: names of elements behind them.
SentNames sentNames(const kavo_names& of, std::size_t count, std::span<const std::string> auxiliary);

// Whether the solver takes this name as it is.
bool isSendable(const char* name);

}  // namespace brel::load
