#pragma once

#include "brel/load/loader.h"
#include "brel/rewrite/evaluate.h"
#include "kavo/link.h"
#include "tav/opt/solver.h"

namespace brel::result {

// Reads what the solver knows after a solve, as far as it is available, and hands it to the host on the user's own
// elements; then the checks of the point against the user's own model. The result closes the host's results
// (kavo_link_finish).
//
// Signs: duals are Gurobi's, the change of the objective per unit of right-hand side, for minimise and maximise alike.
kavo_finish writeBack(trpRec* host, tav::opt::AbstractSolver& solver, const load::TranslatedModel& model);

// What the user's own functions are at a point: the violations of his rows and bounds, the values of his objectives.
void tellPoint(const UserModel& user, const rewrite::UserPoint& point);

}  // namespace brel::result
