#pragma once

#include <string>

#include "app/session.h"

namespace app {

// Writes each point of the pool to its file (poolPath), in AMPL's form or the point form. Returns lines for the user
// about files of an earlier run that are still there. Throws Failure.
std::string writePool(const Session& session, const std::string& stub, bool amplForm);

}  // namespace app
