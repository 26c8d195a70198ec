#pragma once

#include "app/arguments.h"

namespace app {

// Reads the model, solves it, and writes and prints what was asked for. Returns the exit code; failures have been told.
int run(const Arguments& arguments);

}  // namespace app
