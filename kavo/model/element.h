#pragma once

#include <cstddef>
#include <string>

#include "kavo/model/model.h"

namespace kavo {

// How many elements of a kind the model has; 1 for the model itself.
std::size_t elementCount(const Model& model, int kind);

// The number of an element that must be there, as an index; Error (KAVO_INVALID) when it is not.
std::size_t checkElement(const Model& model, int kind, long long index);

// The name an element was given, "" when it has none.
const char* givenName(const Model& model, int kind, std::size_t index);

// The given name of an element, or a name in AMPL's manner for one without: _svar[1], _scon[1], _sobj[1], _slogcon[1],
// _sset[1], counted from 1.
std::string elementName(const Model& model, int kind, std::size_t index);

// For messages: `column 3 ("x")`, or without the name when it has none.
std::string describeElement(const char* kind, std::size_t index, const char* name);

}  // namespace kavo
