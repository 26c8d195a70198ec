#pragma once

#include "brel/load/loader.h"
#include "tav/opt/solver_services.h"

namespace brel::result {

// Marks the user's own elements that a conflict of the solver's model comes from. Together they contradict each other
// in the user's own terms; it is minimal when the solver's is and no element was sent in more parts than are in it.
void giveConflict(const load::TranslatedModel& model, const tav::opt::Conflict& found);

}  // namespace brel::result
