#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace app {

// Exit codes; docs/command-line.md shows them.
inline constexpr int kExitFailure = 1, kExitUsage = 2, kExitInterrupted = 130;

// Ends the run with one line for the user.
class Failure : public std::runtime_error {
 public:
  explicit Failure(const std::string& message, int exitCode = kExitFailure, int solCode = 500)
      : std::runtime_error(message), exitCode_(exitCode), solCode_(solCode) {}
  int exitCode() const { return exitCode_; }
  // What a .sol file says of this failure.
  int solCode() const { return solCode_; }

 private:
  int exitCode_, solCode_;
};

// Joins the lines of a message into one.
std::string oneLine(std::string_view message);

// Throws Failure with kavo_last_error() unless a call of kavo went well.
void check(int status);

}  // namespace app
