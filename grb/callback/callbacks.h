#pragma once

#include "grb/gurobi/types.h"

namespace grb {

// The functions that Gurobi calls. Their user data is the CallbackContext. Both return 0 on every path, since stopping
// goes through GRBterminate; an exception of a listener is kept in the context and stops the solve.

// For GRBsetlogcallbackfunc: a piece of log text, handed on as it is unless the context is muted.
extern "C" int grbLogCallback(char* message, void* context);

// For GRBsetcallbackfuncadv with this mask.
inline constexpr unsigned kCallbackMask = 48;  // bits 4 (new incumbent) and 5 (node of the tree)
extern "C" int grbAdvancedCallback(GRBmodel* model, void* cbdata, int where, void* context);

}  // namespace grb
