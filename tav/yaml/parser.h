#pragma once

#include <deque>
#include <string>

#include "tav/yaml/event.h"
#include "tav/yaml/exception.h"

namespace tav::yaml {

// Reads a text event by event. Raises ParserException as described there.
class Parser {
 public:
  explicit Parser(std::string text);
  Parser(const Parser&) = delete;
  Parser& operator=(const Parser&) = delete;
  ~Parser() { yaml_parser_delete(&parser_); }

  // The next event. After the end of the stream: events of kind unknown.
  Event next();

  // The next event, which must be of this kind.
  Event take(EventKind kind);

  // The kind of the next event, which stays where it is.
  EventKind peek();

  // The next event as a scalar's value; see convert.h.
  Parser& operator>>(int& value);
  Parser& operator>>(double& value);
  Parser& operator>>(bool& value);
  Parser& operator>>(std::string& value);

 private:
  // Asks libyaml for events up to the end of a document or of the stream, but for 10 at most.
  void rawParse();

  std::string text_;
  yaml_parser_t parser_;
  std::deque<Event> queue_;
};

}  // namespace tav::yaml
