#include "tav/yaml/event.h"

#include <cstring>

#include "tav/yaml/exception.h"

namespace tav::yaml {

namespace {

const yaml_char_t* bytes(const char* text) { return reinterpret_cast<const yaml_char_t*>(text); }

std::string_view view(const yaml_char_t* text) {
  return text ? std::string_view(reinterpret_cast<const char*>(text)) : std::string_view();
}

void checkNotEmpty(const char* text, std::string_view expression) {
  if (text && std::strlen(text) == 0) throw CheckException::failedGreaterThan(expression, 0, 0);
}

}  // namespace

std::string_view displayName(EventKind kind) {
  constexpr std::string_view kNames[] = {"Unknown", "StreamStart", "StreamEnd", "DocumentStart", "DocumentEnd",
                                         "Scalar",  "ListStart",   "ListEnd",   "MapStart",      "MapEnd"};
  return kNames[static_cast<std::size_t>(kind)];
}

EventKind Event::kind() const {
  switch (raw_.type) {
    case YAML_STREAM_START_EVENT:
      return EventKind::kStreamStart;
    case YAML_STREAM_END_EVENT:
      return EventKind::kStreamEnd;
    case YAML_DOCUMENT_START_EVENT:
      return EventKind::kDocumentStart;
    case YAML_DOCUMENT_END_EVENT:
      return EventKind::kDocumentEnd;
    case YAML_SCALAR_EVENT:
      return EventKind::kScalar;
    case YAML_SEQUENCE_START_EVENT:
      return EventKind::kListStart;
    case YAML_SEQUENCE_END_EVENT:
      return EventKind::kListEnd;
    case YAML_MAPPING_START_EVENT:
      return EventKind::kMapStart;
    case YAML_MAPPING_END_EVENT:
      return EventKind::kMapEnd;
    default:
      return EventKind::kUnknown;
  }
}

std::string_view Event::text() const {
  if (kind() != EventKind::kScalar) return {};
  return {reinterpret_cast<const char*>(raw_.data.scalar.value), raw_.data.scalar.length};
}

std::string_view Event::tag() const {
  switch (kind()) {
    case EventKind::kScalar:
      return view(raw_.data.scalar.tag);
    case EventKind::kListStart:
      return view(raw_.data.sequence_start.tag);
    case EventKind::kMapStart:
      return view(raw_.data.mapping_start.tag);
    default:
      return {};
  }
}

Scalar::Scalar(std::string_view text, const char* anchor, const char* tag, yaml_scalar_style_t style) {
  checkNotEmpty(anchor, "strlen(anchor)");
  checkNotEmpty(tag, "strlen(tag)");
  // Without a tag the emitter is free in the choice of the style.
  const int isImplicit = tag == nullptr;
  const auto length = static_cast<int>(text.size());
  const char* value = text.empty() ? "" : text.data();
  if (!yaml_scalar_event_initialize(raw(), bytes(anchor), bytes(tag), bytes(value), length, isImplicit, isImplicit,
                                    style)) {
    throw EmitterException("Cannot make a scalar: its text is not UTF-8.", EmitterException::kEvent);
  }
}

}  // namespace tav::yaml
