#pragma once

#include "grb/data.h"

namespace grb {

// Solves a model without integer variables: from the start that it came with unless it has quadratic terms, again
// without presolve when it is infeasible or unbounded and the option "rerun" or its size (at most 300 variables and 300
// rows) says so, and with condition numbers in the log and the record when "kappa" or "kappaexact" is set. Presolve is
// put back by whoever called. Raises GurobiException.
void solveContinuous(Data& data);

}  // namespace grb
