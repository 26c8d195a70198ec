#pragma once

#include <string>

#include "app/session.h"

namespace app::report {

// The sections about what a solve gave; "" for what there is not.

// Status, objective and the other numbers of the outcome, as the head of the page.
std::string outcome(const Session& session);
// Warnings and notes.
std::string notes(const Session& session);
std::string conflict(const Session& session);
// The values of several objectives, and the points of the pool.
std::string answers(const Session& session);
// Values, duals and the like, the first few hundred of them.
std::string variables(const Session& session);
std::string rows(const Session& session);

}  // namespace app::report
