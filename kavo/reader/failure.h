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

// Does a piece of work that checks what the file says but knows nothing of its lines; errors belong to this line.
template <class Work>
void forLine(std::size_t line, Work&& work) {
  try {
    work();
  } catch (const Failure&) {
    throw;
  } catch (const Error& error) {
    throw Failure(error.status() == KAVO_INVALID ? KAVO_FILE : error.status(), line, error.what());
  }
}

}  // namespace kavo::reader
