#pragma once

#include <string>

#include "app/report/path.h"
#include "app/session.h"

namespace app::report {

// One page of HTML about a solve, with everything that it needs in it: no script, no other file, no network. Its size
// does not grow with the model or the path beyond some hundred lines of each table.
std::string page(const Session& session, const Path& path, const std::string& model);

// Writes the page. Throws Failure.
void write(const std::string& file, const Session& session, const Path& path, const std::string& model);

}  // namespace app::report
