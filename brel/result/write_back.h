#pragma once

#include "brel/load/loader.h"
#include "kavo/link.h"
#include "tav/opt/solver.h"

namespace brel::result {

// Reads what the solver knows after a solve, as far as it is available, and hands it to the host on the user's own
// elements; then the checks of the point against the user's own model. The result closes the host's results
// (kavo_link_finish).
//
// Signs: duals are Gurobi's, the change of the objective per unit of right-hand side, for minimise and maximise alike.
kavo_finish writeBack(trpRec* host, tav::opt::AbstractSolver& solver, const load::TranslatedModel& model);

}  // namespace brel::result
