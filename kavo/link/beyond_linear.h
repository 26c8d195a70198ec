#pragma once

#include <string>

#include "kavo/model/model.h"

namespace kavo {

// A sentence about the first thing in the model that is not linear, "" when all is. Of the objectives only the one to
// be solved counts (0: none, 1: the first, ...).
std::string beyondLinear(const Model& model, int objectiveNumber);

}  // namespace kavo
