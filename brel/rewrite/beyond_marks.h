#pragma once

#include "brel/rewrite/beyond.h"
#include "brel/rewrite/marks.h"
#include "brel/user_model.h"

namespace brel::rewrite {

// Marks the user's rows and logical constraints for which parts of `beyond` in the conflict were sent: a set that is
// contradictory by itself, in the user's own terms. What only defines an auxiliary column is in it with every element
// that needs the column; when none of these is marked, the first is.
void markElements(const UserModel& user, const Beyond& beyond, Marks& marks);

}  // namespace brel::rewrite
