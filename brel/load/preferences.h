#pragma once

#include "brel/load/loader.h"

namespace brel::load {

// What the host's suffixes say of who may give way in a relaxation: feaspref is a preference as it is, AMPL's penalties
// lbpen and ubpen of columns and rhspen of rows are its reciprocal, and a penalty of 0 or less keeps the element as it
// is. feaspref counts where both are given. Columns that rules made do not give way, but for the slack of a row whose
// sides cross, which does so instead of the row; binary, semicontinuous and semi-integer ones do not. Raises
// tav::UserException that names the variable whose finite bounds have different penalties, since the solver knows one
// for both.
Preferences preferencesOf(const TranslatedModel& model);

}  // namespace brel::load
