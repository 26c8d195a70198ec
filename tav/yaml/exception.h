#pragma once

#include <string>

#include "tav/util/exception.h"
#include "tav/yaml/event.h"

namespace tav::yaml {

// A text that cannot be read. Codes: 1 memory, 2 encoding, 3 syntax, 4 another event than expected, 5 a scalar that
// cannot be converted, 0 anything else.
class ParserException : public tav::Exception {
 public:
  static constexpr int kMemory = 1;
  static constexpr int kReader = 2;
  static constexpr int kParser = 3;
  static constexpr int kUnexpectedEvent = 4;
  static constexpr int kConversion = 5;

  // start and end: the place of the event; of a syntax error the place of the problem and of what it stands in.
  ParserException(std::string message, const Position& start, const Position& end, int code,
                  util::SourceLocation location = util::SourceLocation::here());

  const Position& start() const { return start_; }
  const Position& end() const { return end_; }

 private:
  Position start_;
  Position end_;
};

// Events that cannot be written. Codes: 1 an event at a wrong place or that the receiver refuses, 2 what is left cannot
// be flushed, 3 an event that cannot be made.
class EmitterException : public tav::Exception {
 public:
  static constexpr int kEmit = 1;
  static constexpr int kFlush = 2;
  static constexpr int kEvent = 3;

  EmitterException(std::string message, int code, util::SourceLocation location = util::SourceLocation::here());
};

}  // namespace tav::yaml
