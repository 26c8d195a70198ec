#pragma once

#include <string>

#include "app/session.h"

namespace app {

// "grblink 0.1.0: optimal solution; objective 88.2" and a line for everything else that a solve tells: what a .sol file
// says. Lines end with "\n".
std::string solMessage(const Session& session);

// The same with the model's size, the time and the solver: what a person reads.
std::string summary(const Session& session);

// What the .sol file of a point of the pool says, counted from 0.
std::string poolMessage(const Session& session, std::size_t index);

// What a .sol file says when there is no result.
std::string failureMessage(const std::string& message);

}  // namespace app
