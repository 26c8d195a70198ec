// Failures of a call, as the caller sees them: a code and a text.
#pragma once

#include <stdexcept>
#include <string>

namespace bridge {

/// Thrown inside the library to end a call with `code` (10001 to 10034) and the text for GRBgeterrormsg.
class Failure : public std::runtime_error {
 public:
  Failure(int code, const std::string& text) : std::runtime_error(text), code_(code) {}
  int code() const { return code_; }

 private:
  int code_;
};

/// Turns the exception that is being handled into a Failure: a Failure stays as it is, Python's exceptions are mapped
/// by kind and text, running out of memory is 10001 and anything else 10003. To be called in a catch block, with the
/// lock of the interpreter if the exception may be Python's.
Failure currentFailure() noexcept;

}  // namespace bridge
