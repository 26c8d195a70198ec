#pragma once

#include <source_location>
#include <string_view>

namespace tav::util {

// Where an error was raised. All texts live as long as the program (literals), so that a location is cheap to copy and
// making one never fails.
class SourceLocation {
 public:
  // A place that is told as a constant, whatever the compiler at hand calls it. `file` is relative to the project and
  // has no extension ("tav/util/cast"); line and column count from 1, 0 means unknown.
  constexpr SourceLocation(std::string_view file, unsigned line, unsigned column, std::string_view function)
      : file_(file), function_(function), line_(line), column_(column) {}

  // The place of the call, or of the given standard location.
  static constexpr SourceLocation here(const std::source_location& at = std::source_location::current()) {
    return {withoutExtension(at.file_name()), at.line(), at.column(), at.function_name()};
  }

  // This place with another name for the function, for signatures that are fixed.
  constexpr SourceLocation inFunction(std::string_view function) const { return {file_, line_, column_, function}; }

  constexpr std::string_view file() const { return file_; }
  constexpr unsigned line() const { return line_; }
  constexpr unsigned column() const { return column_; }
  constexpr std::string_view function() const { return function_; }

 private:
  static constexpr std::string_view withoutExtension(std::string_view file) {
    const auto dot = file.rfind('.');
    const auto slash = file.rfind('/');
    const bool hasExtension = dot != file.npos && (slash == file.npos || dot > slash + 1);
    return hasExtension ? file.substr(0, dot) : file;
  }

  std::string_view file_;
  std::string_view function_;
  unsigned line_;
  unsigned column_;
};

}  // namespace tav::util
