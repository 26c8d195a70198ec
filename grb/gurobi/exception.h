#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "tav/util/exception.h"
#include "tav/util/source_location.h"

namespace grb {

/// A Gurobi function returned a code other than 0. Tag "Gurobi"; message: Gurobi's own text; context: the name of the
/// function that failed, such as "GRBoptimize".
class GurobiException : public tav::Exception {
 public:
  GurobiException(std::string message, int code, std::string_view function, tav::util::SourceLocation location)
      : tav::Exception("Gurobi", std::move(message), std::optional<int>(code), std::string(function), location) {}

  ~GurobiException() override;
};

}  // namespace grb
