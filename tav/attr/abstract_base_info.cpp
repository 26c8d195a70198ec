#include "tav/attr/abstract_base_info.h"

#include <algorithm>

#include "tav/yaml/emitter.h"

namespace tav::attr {

bool AbstractBaseInfo::hasProperty(std::string_view property) const {
  const auto known = properties();
  return std::find(known.begin(), known.end(), property) != known.end();
}

void AbstractBaseInfo::writeProperty(yaml::Emitter& emitter, std::string_view property) const {
  const std::string text = propertyText(property);
  // Other readers of YAML take nothing for no value.
  emitter.emit(
      yaml::Scalar(text, nullptr, nullptr, text.empty() ? YAML_SINGLE_QUOTED_SCALAR_STYLE : YAML_ANY_SCALAR_STYLE));
}

}  // namespace tav::attr
