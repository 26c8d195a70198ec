#pragma once

#include "grb/data.h"
#include "tav/opt/codes.h"

namespace grb {

// Turns the model, in place, into its relaxation by bounds of variables and sides of linear rows, and solves that. What
// has no preference gives way at the price 1, what has one at its reciprocal, what has one of 0 or less not at all, and
// neither do rows and variables that nobody's block brought. Keeps what the relaxation costs in the record. Raises
// GurobiException.
void solveRelaxation(Data& data);

// Why a relaxation ended whose first search was cut short: `status` is that of the second one, which may have come to
// its end although the first did not. Raises GurobiException.
tav::opt::StopReason stopOfRelaxation(Data& data, int status);

}  // namespace grb
