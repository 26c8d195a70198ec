#pragma once

#include <yaml.h>

#include <cstddef>
#include <string_view>
#include <utility>

namespace tav::yaml {

enum class EventKind : int {
  kUnknown = 0,  // no event, and an alias, which is not supported
  kStreamStart = 1,
  kStreamEnd = 2,
  kDocumentStart = 3,
  kDocumentEnd = 4,
  kScalar = 5,
  kListStart = 6,
  kListEnd = 7,
  kMapStart = 8,
  kMapEnd = 9,
};

// The kind as messages call it: "Unknown", "StreamStart", ..., "MapEnd".
std::string_view displayName(EventKind kind);

// A place in a text; line and column count from 1, the index from 0.
struct Position {
  std::size_t line = 1;
  std::size_t column = 1;
  std::size_t index = 0;

  static Position of(const yaml_mark_t& mark) { return {mark.line + 1, mark.column + 1, mark.index}; }
};

// Owns one event of libyaml. Moves only; a moved-from event is of kind unknown.
class Event {
 public:
  Event() : raw_() {}
  Event(Event&& other) noexcept : raw_(std::exchange(other.raw_, yaml_event_t())) {}
  Event& operator=(Event&& other) noexcept {
    std::swap(raw_, other.raw_);
    return *this;
  }
  ~Event() { yaml_event_delete(&raw_); }

  EventKind kind() const;
  Position start() const { return Position::of(raw_.start_mark); }
  Position end() const { return Position::of(raw_.end_mark); }

  // The text of a scalar; empty for other events.
  std::string_view text() const;
  // The tag of a scalar, a list or a map; empty where there is none.
  std::string_view tag() const;

  // For calls of libyaml, which fill an event or take it over.
  yaml_event_t* raw() { return &raw_; }
  // The event now belongs to libyaml.
  yaml_event_t release() { return std::exchange(raw_, yaml_event_t()); }

 private:
  yaml_event_t raw_;
};

// A scalar to emit.
class Scalar : public Event {
 public:
  // Text of a given length. anchor and tag: null for none. Raises tav::CheckException when one is given but empty, and
  // EmitterException when the text is not UTF-8.
  explicit Scalar(std::string_view text, const char* anchor = nullptr, const char* tag = nullptr,
                  yaml_scalar_style_t style = YAML_ANY_SCALAR_STYLE);

  // Text that ends at a zero byte.
  explicit Scalar(const char* text, const char* anchor = nullptr, const char* tag = nullptr,
                  yaml_scalar_style_t style = YAML_ANY_SCALAR_STYLE)
      : Scalar(std::string_view(text), anchor, tag, style) {}
};

}  // namespace tav::yaml
