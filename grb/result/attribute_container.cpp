#include "grb/result/attribute_container.h"

#include <fmt/core.h>

namespace grb {

void failUnread(const char* name) {
  throw tav::Exception("Gurobi", fmt::format("The values of the attribute '{}' were not handed out", name),
                       std::nullopt, "", tav::util::SourceLocation::here());
}

}  // namespace grb
