#pragma once

#include <cstddef>
#include <string>

#include "kavo/model/model.h"

namespace kavo {

// How many elements of a kind the model has; 1 for the model itself.
std::size_t elementCount(const Model& model, int kind);

// The given name of an element, or the name AMPL would show for one without: _svar[1], _scon[1], _sobj[1], counted
// from 1.
std::string elementName(const Model& model, int kind, std::size_t index);

// For messages: `column 3 ("x")`, or without the name when it has none.
std::string describeElement(const char* kind, std::size_t index, const char* name);

}  // namespace kavo
