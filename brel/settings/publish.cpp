#include "brel/settings/publish.h"

#include <algorithm>

#include "brel/host.h"
#include "tav/attr/lib/info_registry.h"
#include "tav/attr/lib/range_info.h"
#include "tav/yaml/emitter.h"

namespace brel::settings {
namespace {

namespace lib = tav::attr::lib;

void publishOne(trpRec* host, const Row& row) {
  const std::string initial = row.info->propertyText("def");
  const std::string help(row.info->documentation());
  kavo_setting_info told{row.name().c_str(), KAVO_SETTING_TEXT, nullptr, 0, 0, row.group.c_str(), help.c_str()};
  if (row.info->hasDefault()) told.default_text = initial.c_str();
  if (const auto* range = dynamic_cast<const lib::RangeInfo<int>*>(row.info.get())) {
    told.type = KAVO_SETTING_INT;
    told.lower = range->lower();
    told.upper = range->upper();
  } else if (const auto* numbers = dynamic_cast<const lib::RangeInfo<double>*>(row.info.get())) {
    told.type = KAVO_SETTING_DOUBLE;
    told.lower = numbers->lower();
    told.upper = numbers->upper();
  }
  checkHost(kavo_link_publish_setting(host, &told));
}

// The groups in the order of their first settings.
std::vector<std::string> groupsOf(const Table& table) {
  std::vector<std::string> groups;
  for (const Row& row : table.rows()) {
    if (std::find(groups.begin(), groups.end(), row.group) == groups.end()) groups.push_back(row.group);
  }
  return groups;
}

}  // namespace

void publish(trpRec* host, const Table& table) {
  for (const Row& row : table.rows()) publishOne(host, row);
  checkHost(kavo_link_publish_description(host, description(table).c_str()));
}

std::string description(const Table& table) {
  std::string yaml;
  tav::yaml::Emitter emitter([&](std::string_view piece) {
    yaml += piece;
    return true;
  });
  emitter.startStream();
  emitter.startDocument();
  emitter.startMap();
  for (const std::string& group : groupsOf(table)) {
    emitter.scalar(group);
    emitter.startList();
    for (const Row& row : table.rows()) {
      if (row.group == group) lib::infoRegistry().write(emitter, *row.info);
    }
    emitter.endList();
  }
  emitter.endMap();
  emitter.endDocument();
  emitter.endStream();
  emitter.flush();
  return yaml;
}

}  // namespace brel::settings
