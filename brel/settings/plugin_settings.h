#pragma once

#include <memory>
#include <vector>

#include "brel/link_def.h"
#include "tav/attr/abstract_base_info.h"

namespace brel::settings {

// A value that a plug-in takes, under the name that the link gave it, or else the plug-in's own default; attributes
// without either are called "plugin-attribute-" and their number.
struct PluginSetting {
  PluginAttrib attribute;
  Plugin plugin;
  bool acts;  // false: setting it is an error, because nothing would come of it
  std::shared_ptr<const tav::attr::AbstractBaseInfo> info;
};

// The values that the plug-ins of a link take, in the order of their numbers.
std::vector<PluginSetting> pluginSettings(const LinkDef& definition);

}  // namespace brel::settings
