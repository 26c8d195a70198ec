#pragma once

#include "brel/rewrite/evaluate.h"
#include "brel/user_model.h"

namespace brel::result {

// Evaluates the user's own rows, bounds, integrality, logical constraints and ordered sets at a point and tells the
// host the largest violation of each kind, with the element that has it.
void checkPoint(const UserModel& user, const rewrite::UserPoint& at);

}  // namespace brel::result
