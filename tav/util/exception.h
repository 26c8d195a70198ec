#pragma once

#include <fmt/core.h>

#include <concepts>
#include <exception>
#include <optional>
#include <string>
#include <string_view>

#include "tav/util/source_location.h"

namespace tav {

// Base of all errors of the project. `what()` reads "tag: message [context, code N] (file:line)"; a part that is absent
// is left out together with its punctuation.
class Exception : public std::exception {
 public:
  // `tag` names the family of the error ("Gurobi"), `context` the thing that failed (a library function, a signature);
  // both may be empty.
  Exception(std::string tag, std::string message, std::optional<int> code, std::string context,
            util::SourceLocation location);

  // An error that is only a message.
  explicit Exception(std::string message, util::SourceLocation location = util::SourceLocation::here());

  const char* what() const noexcept override { return what_.c_str(); }

  const std::string& tag() const { return tag_; }
  const std::string& message() const { return message_; }
  std::optional<int> code() const { return code_; }
  const std::string& context() const { return context_; }
  const util::SourceLocation& location() const { return location_; }

 private:
  std::string tag_;
  std::string message_;
  std::optional<int> code_;
  std::string context_;
  util::SourceLocation location_;
  std::string what_;
};

// An error that its message tells a user how to mend, such as a wrong value of an option. what() is the message alone;
// the place in the source is for others.
class UserException : public Exception {
 public:
  explicit UserException(std::string message, util::SourceLocation location = util::SourceLocation::here());

  const char* what() const noexcept override { return message().c_str(); }
};

// A violated precondition. Messages: "'<expression>' (which is <value>) must be <relation> <bound>.", where a bound
// that has a name of its own reads "'<name>' (which is <value>)".
class CheckException : public Exception {
 public:
  // The value of the checked expression: a number or a text.
  struct Value {
    template <class T>
      requires std::integral<T> || std::floating_point<T> || std::convertible_to<T, std::string_view>
    Value(const T& value) : text(fmt::format("{}", value)) {}  // NOLINT: implicit, factories take plain numbers

    std::string text;
  };

  // What the value is compared with: a number, or a named expression: {"size()", 5}.
  struct Bound {
    template <class T>
      requires std::integral<T> || std::floating_point<T>
    Bound(const T& value) : text(fmt::format("{}", value)) {}  // NOLINT: implicit, factories take plain numbers
    Bound(std::string_view name, const Value& value) : text(fmt::format("'{}' (which is {})", name, value.text)) {}

    std::string text;
  };

  CheckException(std::string message, util::SourceLocation location);

  using Location = util::SourceLocation;
  static CheckException failedGreaterOrEqualTo(std::string_view expression, const Value& value, const Bound& bound,
                                               Location location = Location::here());
  static CheckException failedLessOrEqualTo(std::string_view expression, const Value& value, const Bound& bound,
                                            Location location = Location::here());
  static CheckException failedLessThan(std::string_view expression, const Value& value, const Bound& bound,
                                       Location location = Location::here());
  static CheckException failedGreaterThan(std::string_view expression, const Value& value, const Bound& bound,
                                          Location location = Location::here());
  static CheckException failedEqualTo(std::string_view expression, const Value& value, const Bound& bound,
                                      Location location = Location::here());

  // The expression was false and "must be true", or the reverse.
  static CheckException failedTrue(std::string_view expression, Location location = Location::here());
  static CheckException failedFalse(std::string_view expression, Location location = Location::here());
};

}  // namespace tav
