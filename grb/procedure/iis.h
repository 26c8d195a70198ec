#pragma once

#include "grb/data.h"

namespace grb {

// Finds parts of an infeasible model that contradict each other, tells them in the log and keeps them in the record.
// Raises GurobiException, also when the model is feasible.
void reportIis(Data& data, int status);

}  // namespace grb
