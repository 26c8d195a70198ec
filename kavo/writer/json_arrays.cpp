#include "kavo/model/element.h"
#include "kavo/writer/element_names.h"
#include "kavo/writer/json_parts.h"

namespace kavo::writer {

void writeNumbers(JsonText& json, const char* key, const Numbers& values) {
  json.key(key);
  if (!values) return json.null();
  json.beginArray();
  for (const double value : *values) json.value(value);
  json.endArray();
}

void writeBasis(JsonText& json, const Statuses& basis) {
  constexpr const char* kWords[] = {nullptr, "lower", "upper", "basic", "superbasic"};
  json.key("basis");
  if (!basis) return json.null();
  json.beginArray();
  for (const int status : *basis) {
    json.value(status >= KAVO_BASIS_LOWER && status <= KAVO_SUPERBASIC ? kWords[status] : nullptr);
  }
  json.endArray();
}

void writeNames(JsonText& json, const Model& model, int kind) {
  const std::size_t count = elementCount(model, kind);
  ElementNames names(model, kind);
  json.key("name");
  json.beginArray();
  for (std::size_t i = 0; i < count; ++i) json.value(names.at(i));
  json.endArray();
}

}  // namespace kavo::writer
