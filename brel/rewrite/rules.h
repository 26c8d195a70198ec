#pragma once

#include "brel/rewrite/solver_model.h"

// The rules, each in a file of its own. A rule changes the solver's model and pushes one step on the trail.
namespace brel::rewrite {

// Takes columns and rows from `model.beyond()`: the user's start gives values to the columns, and rows that were moved
// get their results from their own functions and from the rows that are sent for them.
void movedRows(const UserModel& user, const SolverModel& model, Trail& trail);

// Binary columns become integer ones with bounds tightened to [0, 1].
void binaryColumns(const kavo_columns& columns, SolverModel& model, Trail& trail);

// Rows without a side are dropped; their activity is worked out from the user's terms afterwards.
void freeRows(const kavo_rows& rows, SolverModel& model, Trail& trail);

// lower <= f <= upper becomes f - s = 0 with lower <= s <= upper. The user's dual is the equality's, the user's basis
// status stands on s unless the equality itself is basic.
void rangedRows(const kavo_rows& rows, SolverModel& model, Trail& trail);

}  // namespace brel::rewrite
