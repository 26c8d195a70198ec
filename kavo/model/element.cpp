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
    default:
      throw Error(KAVO_INVALID, fmt::format("there is no kind of element {}", kind));
  }
}

std::string elementName(const Model& model, int kind, std::size_t index) {
  const std::size_t count = elementCount(model, kind);
  if (index >= count) throw Error(KAVO_INVALID, fmt::format("there is no element {}: the model has {}", index, count));
  if (kind == KAVO_MODEL) return model.name;
  const char* name = kind == KAVO_COLUMN ? model.columns.names.at(index)
                     : kind == KAVO_ROW  ? model.rows.names.at(index)
                                         : model.objectives[index].name.c_str();
  if (*name != '\0') return name;
  constexpr const char* kDefault[] = {"_svar", "_scon", "_sobj"};
  return fmt::format("{}[{}]", kDefault[kind], index + 1);
}

std::string describeElement(const char* kind, std::size_t index, const char* name) {
  if (name == nullptr || *name == '\0') return fmt::format("{} {}", kind, index);
  return fmt::format("{} {} (\"{}\")", kind, index, name);
}

}  // namespace kavo
