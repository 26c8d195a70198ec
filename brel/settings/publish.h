#pragma once

#include <string>

#include "brel/settings/table.h"
#include "kavo/link.h"

namespace brel::settings {

// Tells the host of every setting, one by one and as a description in YAML.
void publish(trpRec* host, const Table& table);

// The settings as YAML: a map from each group to the list of its settings' infos, in the order of the table. Each info
// is a map tagged with its kind (tav/attr/lib/info_registry.h reads it back).
std::string description(const Table& table);

}  // namespace brel::settings
