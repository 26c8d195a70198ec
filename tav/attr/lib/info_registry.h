#pragma once

#include "tav/yaml/registry.h"

namespace tav::attr::lib {

// The agents that write and read the descriptions of items: "Info_String", "Info_Int32", "Info_Float64",
// "RangeInfo_Int32" and "RangeInfo_Float64". A description becomes a map of the properties that say something.
const yaml::Registry& infoRegistry();

}  // namespace tav::attr::lib
