#include "tav/attr/abstract_base_info.h"

#include <algorithm>

#include "tav/yaml/emitter.h"

namespace tav::attr {

bool AbstractBaseInfo::hasProperty(std::string_view property) const {
  const auto known = properties();
  return std::find(known.begin(), known.end(), property) != known.end();
}

void AbstractBaseInfo::writeProperty(yaml::Emitter& emitter, std::string_view property) const {
  emitter.scalar(propertyText(property));
}

}  // namespace tav::attr
