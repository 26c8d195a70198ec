#include "tav/yaml/parser.h"

#include <fmt/format.h>

#include <new>
#include <utility>

#include "tav/util/number.h"
#include "tav/yaml/convert.h"

namespace tav::yaml {

namespace {

constexpr int kRefill = 10;

// Scanner errors are left among the others.
int codeOf(yaml_error_type_t error) {
  switch (error) {
    case YAML_MEMORY_ERROR:
      return ParserException::kMemory;
    case YAML_READER_ERROR:
      return ParserException::kReader;
    case YAML_PARSER_ERROR:
      return ParserException::kParser;
    default:
      return 0;
  }
}

ParserException failure(const yaml_parser_t& parser) {
  Position problem = Position::of(parser.problem_mark);
  // The reader knows no lines yet, only how far it came.
  if (parser.error == YAML_READER_ERROR) problem.index = parser.problem_offset;
  const char* message = parser.problem ? parser.problem : "Cannot read the text.";
  return {message, problem, Position::of(parser.context_mark), codeOf(parser.error)};
}

template <class T>
void convertNext(Parser& parser, T& value, std::optional<T> (*convert)(std::string_view), std::string_view type) {
  const Event event = parser.take(EventKind::kScalar);
  const auto converted = convert(event.text());
  if (!converted) {
    throw ParserException(fmt::format("Cannot convert '{}' to '{}'.", event.text(), type), event.start(), event.end(),
                          ParserException::kConversion);
  }
  value = *converted;
}

}  // namespace

Parser::Parser(std::string text) : text_(std::move(text)), parser_() {
  if (!yaml_parser_initialize(&parser_)) throw std::bad_alloc();
  yaml_parser_set_input_string(&parser_, reinterpret_cast<const unsigned char*>(text_.data()), text_.size());
}

void Parser::rawParse() {
  for (int k = 0; k < kRefill; ++k) {
    Event event;
    if (!yaml_parser_parse(&parser_, event.raw())) throw failure(parser_);
    const EventKind kind = event.kind();
    queue_.push_back(std::move(event));
    if (kind == EventKind::kStreamEnd || kind == EventKind::kDocumentEnd) return;
  }
}

Event Parser::next() {
  if (queue_.empty()) rawParse();
  Event event = std::move(queue_.front());
  queue_.pop_front();
  return event;
}

Event Parser::take(EventKind kind) {
  Event event = next();
  if (event.kind() != kind) {
    throw ParserException(fmt::format("Expected event '{}', but is '{}'", displayName(kind), displayName(event.kind())),
                          event.start(), event.end(), ParserException::kUnexpectedEvent);
  }
  return event;
}

EventKind Parser::peek() {
  if (queue_.empty()) rawParse();
  return queue_.front().kind();
}

Parser& Parser::operator>>(int& value) {
  convertNext(*this, value, util::toInt, "int");
  return *this;
}

Parser& Parser::operator>>(double& value) {
  convertNext(*this, value, toDouble, "double");
  return *this;
}

Parser& Parser::operator>>(bool& value) {
  convertNext(*this, value, toBool, "bool");
  return *this;
}

Parser& Parser::operator>>(std::string& value) {
  value = take(EventKind::kScalar).text();
  return *this;
}

}  // namespace tav::yaml
