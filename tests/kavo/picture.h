#pragma once

#include <functional>
#include <string>
#include <vector>

#include "kavo/kavo.h"

namespace kavo_test {

// Everything of a model that a link sees, as one comparable text: a line per column, row and objective, and behind "="
// a line for each of what else there is.
std::string picture(const trpRec* model);

// A call that is refused, and a part of the error that is expected.
struct BadCall {
  const char* message;
  std::function<int(trpRec*)> call;
  int status = KAVO_INVALID;
};
// Each call is refused by name and changes nothing in the model that `fill` makes.
void expectRefused(void (*fill)(trpRec*), const std::vector<BadCall>& calls);

}  // namespace kavo_test
