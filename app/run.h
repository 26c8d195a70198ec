#pragma once

#include "app/arguments.h"
#include "app/failure.h"

namespace app {

// Reads the model, solves it, and writes and prints what was asked for. Returns the exit code; failures have been told.
int run(const Arguments& arguments);

// Tells a failure that came before the run in the .sol of a model given by the AMPL protocol. False when it cannot be
// written.
bool answerFailure(const char* model, const Failure& failure);

}  // namespace app
