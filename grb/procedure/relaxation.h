#pragma once

#include "grb/data.h"

namespace grb {

// Turns the model, in place, into its relaxation by bounds of variables and sides of linear rows, and solves that. What
// has no preference gives way at the price 1, what has one at its reciprocal, what has one of 0 or less not at all, and
// neither do rows and variables that nobody's block brought. Keeps what the relaxation costs in the record. Raises
// GurobiException.
void solveRelaxation(Data& data);

}  // namespace grb
