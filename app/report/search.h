#pragma once

#include <string>

#include "app/report/path.h"
#include "app/session.h"

namespace app::report {

// The chart of the search with its last values, or why there is none.
std::string search(const Session& session, const Path& path);

}  // namespace app::report
