#pragma once

#include <memory>

#include "brel/rewrite/solver_model.h"
#include "brel/rewrite/trail.h"
#include "kavo/link.h"
#include "tav/opt/solver.h"

namespace brel::load {

// A model inside the solver: what was sent, how it came about, and the adders that took it in, by which results are
// asked for. The host's arrays are borrowed.
struct LoadedModel {
  kavo_columns columns;
  kavo_rows rows;
  rewrite::SolverModel sent;
  rewrite::Trail trail;
  std::shared_ptr<const tav::opt::AbstractAdder> rowAdder, objectiveAdder;
};

// Loads the host's model, block by block: variables, linear rows, the chosen objective. The solver must have an empty
// model. Raises SupportException and what the solver raises.
LoadedModel load(trpRec* host, tav::opt::AbstractSolver& solver);

}  // namespace brel::load
