#pragma once

#include <string>

#include "brel/load/loader.h"
#include "tav/opt/solver_services.h"

namespace brel::result {

// What in the model lets no point of it have duals, in a few words: "integer variables". Empty when there is nothing.
// The first group is what nobody expects duals of.
std::string discreteParts(const load::TranslatedModel& model);
std::string whyNoDuals(const load::TranslatedModel& model, const tav::opt::AbstractSolverServices* services);

}  // namespace brel::result
