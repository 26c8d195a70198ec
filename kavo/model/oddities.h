#pragma once

#include <string>
#include <vector>

#include "kavo/model/model.h"

namespace kavo {

// Appends a line for each kind of thing in the model that is allowed but likely a mistake: equal names, bounds or sides
// that exclude each other, suffixes that other solvers heed and nothing here does. One line per kind, with the first
// element concerned, so that no model floods the user.
void noteOddities(const Model& model, std::vector<std::string>& notes);

}  // namespace kavo
