#pragma once

#include "grb/data.h"
#include "tav/opt/codes.h"

namespace grb {

// The sequence of one solve on the loaded model. Raises what a Gurobi call or a listener raised.
tav::opt::Termination solve(Data& data);

}  // namespace grb
