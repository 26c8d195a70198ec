#pragma once

#include <string>

namespace grb {

// The heading under which people look for a setting of the catalogue (its key), such as "Tolerances"; empty for a key
// that the catalogue does not have.
std::string settingGroup(int key);

}  // namespace grb
