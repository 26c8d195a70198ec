#pragma once

#include "brel/link_def.h"

namespace exports {

// The plug-ins of the framework that this link switches on, in their order, and the option names of their attributes.
brel::LinkDef pluginDefinition();

}  // namespace exports
