#pragma once

#include <string>

#include "tav/util/exception.h"

namespace tav::opt {

// A piece of a model that the solver cannot take.
class SupportException : public Exception {
 public:
  SupportException(std::string message, util::SourceLocation location)
      : Exception("Support", std::move(message), std::nullopt, "", location) {}
};

}  // namespace tav::opt
