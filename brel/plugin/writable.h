#pragma once

#include <string>

#include "brel/plugin/plugin.h"
#include "tav/util/exception.h"

namespace brel::plugin {

// Raises tav::UserException that names the option, of that attribute, when the file cannot be written.
inline void checkWritable(const Solve& solve, PluginAttrib attribute, const std::string& path) {
  if (kavo_check_writable(path.c_str()) == KAVO_OK) return;
  throw tav::UserException(solve.values.heading(attribute) + kavo_last_error());
}

}  // namespace brel::plugin
