#include "kavo/model/element.h"

#include <fmt/format.h>

#include "kavo/error.h"

namespace kavo {

std::size_t elementCount(const Model& model, int kind) {
  switch (kind) {
    case KAVO_COLUMN:
      return model.columns.size();
    case KAVO_ROW:
      return model.rows.size();
    case KAVO_OBJECTIVE:
      return model.objectives.size();
    case KAVO_MODEL:
      return 1;
    case KAVO_LOGICAL:
      return model.logical.size();
    case KAVO_SET:
      return model.sets.size();
    default:
      throw Error(KAVO_INVALID, fmt::format("there is no kind of element {}", kind));
  }
}

std::size_t checkElement(const Model& model, int kind, long long index) {
  const std::size_t count = elementCount(model, kind);
  if (index >= 0 && static_cast<std::size_t>(index) < count) return static_cast<std::size_t>(index);
  throw Error(KAVO_INVALID, fmt::format("there is no element {}: the model has {} of this kind", index, count));
}

const char* givenName(const Model& model, int kind, std::size_t index) {
  switch (kind) {
    case KAVO_COLUMN:
      return model.columns.names.at(index);
    case KAVO_ROW:
      return model.rows.names.at(index);
    case KAVO_OBJECTIVE:
      return model.objectives[index].name.c_str();
    case KAVO_LOGICAL:
      return model.logicalNames.at(index);
    case KAVO_SET:
      return model.sets.names.at(index);
    default:
      return model.name.c_str();
  }
}

std::string elementName(const Model& model, int kind, std::size_t index) {
  const std::size_t count = elementCount(model, kind);
  if (index >= count) throw Error(KAVO_INVALID, fmt::format("there is no element {}: the model has {}", index, count));
  const char* name = givenName(model, kind, index);
  if (*name != '\0' || kind == KAVO_MODEL) return name;
  constexpr const char* kDefault[] = {"_svar", "_scon", "_sobj", "", "_slogcon", "_sset"};
  return fmt::format("{}[{}]", kDefault[kind], index + 1);
}

std::string describeElement(const char* kind, std::size_t index, const char* name) {
  if (name == nullptr || *name == '\0') return fmt::format("{} {}", kind, index);
  return fmt::format("{} {} (\"{}\")", kind, index, name);
}

}  // namespace kavo
