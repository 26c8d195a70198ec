#pragma once

#include "grb/data.h"

namespace grb {

// Gives Gurobi the coefficients and objective coefficients that changed since the last solve, row by row, and forgets
// them. Raises GurobiException; what is not sent then is sent by the next solve.
void applyChanges(Data& data);

}  // namespace grb
