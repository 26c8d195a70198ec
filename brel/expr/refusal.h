#pragma once

#include <fmt/format.h>

#include <string>
#include <string_view>

#include "tav/opt/support_exception.h"

namespace brel::expr {

// Says what is wrong with an expression, by the element that it belongs to.
class Refusal {
 public:
  // Borrowed until the next call.
  void setElement(const std::string& element) { element_ = &element; }
  [[noreturn]] void raise(std::string_view what,
                          tav::util::SourceLocation at = tav::util::SourceLocation::here()) const {
    throw tav::opt::SupportException(fmt::format("{}: {}", *element_, what), at);
  }

 private:
  const std::string* element_ = nullptr;
};

}  // namespace brel::expr
