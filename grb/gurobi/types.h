// The two opaque handles of the Gurobi C interface, declared here so that the project builds without Gurobi installed.
#pragma once

#include <cstddef>

/// An environment: parameters and licence. Owned by GurobiEnv, except the copies that GRBgetenv hands out.
struct GRBenv;

/// A model. Owned by GurobiModel.
struct GRBmodel;

namespace grb {

/// Callback of GRBsetcallbackfuncadv. A non-zero result aborts the solve with error 10011.
using GurobiCallback = int (*)(GRBmodel* model, void* cbdata, int where, void* usrdata);

/// Callback of GRBsetlogcallbackfunc. `msg` is one piece of log text with its newline.
using GurobiLogCallback = int (*)(char* msg, void* logdata);

}  // namespace grb
