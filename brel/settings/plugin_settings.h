#pragma once

#include <memory>
#include <string>
#include <vector>

#include "brel/link_def.h"
#include "tav/attr/abstract_base_info.h"

namespace brel::settings {

// A value that a plug-in takes, under the name that the link gave it or else "plugin-attribute-" and its number.
struct PluginSetting {
  PluginAttrib attribute;
  Plugin plugin;
  std::string feature;  // of the plug-in, in a few words
  bool acts;            // false: setting it is an error, because nothing would come of it
  std::shared_ptr<const tav::attr::AbstractBaseInfo> info;
};

// The values that the plug-ins of a link take, in the order of their numbers.
std::vector<PluginSetting> pluginSettings(const LinkDef& definition);

}  // namespace brel::settings
