#pragma once

#include <fmt/core.h>

#include <source_location>
#include <string>

#include "tav/opt/support_exception.h"

namespace grb {

// The place of a refusal of an expression: one file for all of them, with the true line and the function's signature.
inline tav::util::SourceLocation nonlinearLocation(const std::source_location& at = std::source_location::current()) {
  return {"grb/nonlinear", at.line(), at.column(), at.function_name()};
}

}  // namespace grb
