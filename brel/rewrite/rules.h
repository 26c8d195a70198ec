#pragma once

#include "brel/rewrite/solver_model.h"

// The rules, each in a file of its own. A rule changes the solver's model and pushes one step on the trail.
namespace brel::rewrite {

// Binary columns become integer ones with bounds tightened to [0, 1].
void binaryColumns(const kavo_columns& columns, SolverModel& model, Trail& trail);

// Rows without a side are dropped; their activity is worked out from the user's terms afterwards.
void freeRows(const kavo_rows& rows, SolverModel& model, Trail& trail);

// lower <= f <= upper becomes f - s = 0 with lower <= s <= upper. The user's dual is the equality's, the user's basis
// status stands on s unless the equality itself is basic.
void rangedRows(const kavo_rows& rows, SolverModel& model, Trail& trail);

}  // namespace brel::rewrite
