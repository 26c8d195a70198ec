#pragma once

#include <string>

#include "app/session.h"

namespace app {

// "grblink 0.1.0: optimal solution; objective 88.2" and a line for everything else that a solve tells: what a .sol file
// says. Lines end with "\n".
std::string solMessage(const Session& session);

// The same with the model's size, the time and the solver: what a person reads.
std::string summary(const Session& session);

// A table "name value" of a quantity (a kavo_quantity), with a heading; "" when the solve has not given it.
std::string table(const Session& session, int quantity);

// What a .sol file says when there is no result.
std::string failureMessage(const std::string& message);

}  // namespace app
