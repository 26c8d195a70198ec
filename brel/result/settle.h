#pragma once

#include "brel/result/reader.h"

namespace brel::result {

bool isInfeasible(int status);

// What the solver's end, as the reader has it, says of the user's model, with notes about what it leaves open: infinite
// values are no point; with a cutoff a search that finds nothing has not shown that there is nothing; a relaxation is
// another model than the user's.
void settle(Reader& reader, trpRec* host, tav::opt::AbstractSolver& solver, kavo_finish& finish);

}  // namespace brel::result
