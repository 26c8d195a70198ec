#pragma once

#include "grb/data.h"

namespace grb {

// What is handed to Gurobi just before it solves, each told in the log. Raise GurobiException.

// Of a continuous model: its basis, and its point with the marginals, as the option "usebasis" has it and as far as
// they are complete. A basis with another number of basic entries than rows is left out.
void registerBasisAndPoint(Data& data);

// Of a model with integer variables. A value that is farther from a whole number than Gurobi tolerates is left out and
// counted, for variables that must be whole.
void registerMipStarts(Data& data);  // option "mipstart"
void registerHints(Data& data);      // option "varhint"; from the variables' levels
// Those that have a finite number; a smaller one is branched on first.
void registerPriorities(Data& data);

}  // namespace grb
