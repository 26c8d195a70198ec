#pragma once

#include <functional>
#include <string_view>

#include "tav/yaml/event.h"
#include "tav/yaml/exception.h"

namespace tav::yaml {

// Writes events as text in block style. Raises EmitterException when an event stands where none may, or when the
// receiver refuses the text.
class Emitter {
 public:
  // Takes a piece of text; false when it cannot.
  using Sink = std::function<bool(std::string_view)>;

  explicit Emitter(Sink sink);
  Emitter(const Emitter&) = delete;
  Emitter& operator=(const Emitter&) = delete;
  ~Emitter() { yaml_emitter_delete(&emitter_); }

  // The event belongs to libyaml afterwards, whether it could be written or not.
  void emit(Event event);

  // Hands on what is still held back.
  void flush();

  void startStream();
  void endStream();
  void startDocument();
  void endDocument();
  // tag: null for none.
  void startList(const char* tag = nullptr);
  void endList();
  void startMap(const char* tag = nullptr);
  void endMap();
  void scalar(std::string_view text) { emit(Scalar(text)); }

 private:
  Sink sink_;
  yaml_emitter_t emitter_;
};

}  // namespace tav::yaml
