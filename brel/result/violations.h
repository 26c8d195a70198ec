#pragma once

#include <span>

#include "brel/rewrite/evaluate.h"
#include "brel/user_model.h"

namespace brel::result {

// Evaluates the user's own rows, bounds, integrality, logical constraints and ordered sets at a point and tells the
// host the largest violation of each kind, with the element that has it.
void checkPoint(const UserModel& user, const rewrite::UserPoint& at);

// The largest violation of bounds and ordered sets at a point. Tells the host nothing.
double largestOfBoundsAndSets(const UserModel& user, std::span<const double> point);

}  // namespace brel::result
