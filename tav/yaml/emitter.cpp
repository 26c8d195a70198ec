#include "tav/yaml/emitter.h"

#include <new>
#include <string>
#include <utility>

namespace tav::yaml {

namespace {

int write(void* sink, unsigned char* text, std::size_t size) noexcept {
  try {
    return (*static_cast<Emitter::Sink*>(sink))({reinterpret_cast<const char*>(text), size}) ? 1 : 0;
  } catch (...) {
    return 0;  // nothing may pass through libyaml
  }
}

const yaml_char_t* bytes(const char* text) { return reinterpret_cast<const yaml_char_t*>(text); }

// Makes an event by one of libyaml's functions, which fail for lack of memory or for a tag that is not UTF-8.
template <class Initialize, class... Args>
Event make(Initialize initialize, Args... args) {
  Event event;
  if (!initialize(event.raw(), args...)) throw EmitterException("Cannot make an event.", EmitterException::kEvent);
  return event;
}

}  // namespace

Emitter::Emitter(Sink sink) : sink_(std::move(sink)), emitter_() {
  if (!yaml_emitter_initialize(&emitter_)) throw std::bad_alloc();
  yaml_emitter_set_output(&emitter_, write, &sink_);
  yaml_emitter_set_unicode(&emitter_, 1);
}

void Emitter::emit(Event event) {
  yaml_event_t raw = event.release();
  if (!yaml_emitter_emit(&emitter_, &raw)) {
    throw EmitterException(emitter_.problem ? emitter_.problem : "Cannot write an event.", EmitterException::kEmit);
  }
}

void Emitter::flush() {
  if (!yaml_emitter_flush(&emitter_)) throw EmitterException("Cannot flush", EmitterException::kFlush);
}

void Emitter::startStream() { emit(make(yaml_stream_start_event_initialize, YAML_UTF8_ENCODING)); }

void Emitter::endStream() { emit(make(yaml_stream_end_event_initialize)); }

void Emitter::startDocument() { emit(make(yaml_document_start_event_initialize, nullptr, nullptr, nullptr, 1)); }

void Emitter::endDocument() { emit(make(yaml_document_end_event_initialize, 1)); }

void Emitter::startList(const char* tag) {
  emit(make(yaml_sequence_start_event_initialize, nullptr, bytes(tag), tag == nullptr, YAML_BLOCK_SEQUENCE_STYLE));
}

void Emitter::endList() { emit(make(yaml_sequence_end_event_initialize)); }

void Emitter::startMap(const char* tag) {
  emit(make(yaml_mapping_start_event_initialize, nullptr, bytes(tag), tag == nullptr, YAML_BLOCK_MAPPING_STYLE));
}

void Emitter::endMap() { emit(make(yaml_mapping_end_event_initialize)); }

}  // namespace tav::yaml
