#pragma once

#include <string>

#include "app/session.h"

namespace app::report {

// The sections about what a solve was given.

// Sizes of the model by kind, and the ranges of its numbers.
std::string statistics(const Session& session);
// The settings in force that were given, with the place where; secrets are masked.
std::string settings(const Session& session);

}  // namespace app::report
