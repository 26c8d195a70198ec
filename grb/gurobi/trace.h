// The call trace: a table over another table that writes one line per Gurobi call.
//
//   12 GRBaddconstr(model, 2, *, *, '<', 4, "R0") = 0 [3 us]
//
// The number counts the calls in the order in which they began. A line is written when its call ends, so the calls that
// a callback makes during GRBoptimize stand above it. Arrays, buffers and addresses appear as * or null (the lengths
// are among the arguments), handles as env, model or null. Values of secret parameters appear as ***.
#pragma once

#include <memory>
#include <string>

#include "grb/gurobi/library.h"

namespace grb {

/// A library whose calls go to `inner` and are written to `file`, which is overwritten when this process names it for
/// the first time. A process traces one table at a time: while a trace lives, its file goes on whatever `file` says.
/// Thread-safe. Throws LoadError when the file cannot be written or a trace of another table still lives.
std::shared_ptr<const Library> traceCalls(std::shared_ptr<const Library> inner, const std::string& file);

/// Why the trace that lives ends early, with the name of its file; "" while nothing of it is lost. Thread-safe.
std::string traceFailure();

}  // namespace grb
