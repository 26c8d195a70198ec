#include "tav/util/cast.h"

#include "tav/util/exception.h"

namespace tav::detail {

void throwCastError(const std::string& value, std::string_view from, std::string_view to) {
  throw Exception("Cast Error", fmt::format("Cannot cast {} from '{}' to '{}'.", value, from, to), std::nullopt, {},
                  util::SourceLocation::here());
}

}  // namespace tav::detail
