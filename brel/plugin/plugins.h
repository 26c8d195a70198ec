#pragma once

#include <memory>

#include "brel/plugin/plugin.h"

// The plug-ins, each in a file of its own.
namespace brel::plugin {

std::unique_ptr<AbstractPlugin> writeBack();

}  // namespace brel::plugin
