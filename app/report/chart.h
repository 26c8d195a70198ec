#pragma once

#include <string>

#include "app/report/path.h"

namespace app::report {

// The chart of a path over time, as an SVG element and a line about what lies beyond its edges, if anything does. ""
// when there is neither an incumbent nor a bound.
std::string chart(const Path& path);

}  // namespace app::report
