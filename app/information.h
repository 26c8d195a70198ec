#pragma once

#include "app/arguments.h"

namespace app {

// Does what is asked for besides solving. Returns the exit code.
int inform(const Arguments& arguments);

}  // namespace app
