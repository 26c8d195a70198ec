#pragma once

#include <cstddef>
#include <string>

#include "kavo/error.h"

namespace kavo::reader {

// Why one way of reading a file ended, and at which line (counted from 1). The text names line and section but not the
// file.
class Failure : public Error {
 public:
  Failure(kavo_status status, std::size_t line, const std::string& text) : Error(status, text), line_(line) {}
  std::size_t line() const { return line_; }

 private:
  std::size_t line_;
};

}  // namespace kavo::reader
