#include "tav/yaml/exception.h"

#include <fmt/format.h>

#include <utility>

namespace tav::yaml {

namespace {

std::string places(const Position& start, const Position& end) {
  return fmt::format("line {}, column {} to line {}, column {}", start.line, start.column, end.line, end.column);
}

}  // namespace

ParserException::ParserException(std::string message, const Position& start, const Position& end, int code,
                                 util::SourceLocation location)
    : tav::Exception("YAML", std::move(message), code, places(start, end), location), start_(start), end_(end) {}

EmitterException::EmitterException(std::string message, int code, util::SourceLocation location)
    : tav::Exception("YAML", std::move(message), code, {}, location) {}

}  // namespace tav::yaml
