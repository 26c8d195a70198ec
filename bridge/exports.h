// Prototypes of everything that the library exports, made from the list of functions.
//
// Every definition is written `extern "C"`: one that differs from the list in a single parameter is then a conflicting
// declaration, which the compiler refuses.
#pragma once

#include <cstddef>

#include "grb/gurobi/types.h"

namespace bridge {

extern "C" {
#define GRB_FN(result, name, parameters, since) [[gnu::visibility("default")]] result name parameters;
#include "grb/gurobi/functions.def"
}

}  // namespace bridge
