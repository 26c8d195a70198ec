#include "tav/yaml/registry.h"

#include <fmt/format.h>

#include <utility>

namespace tav::yaml {

void Registry::add(std::string kind, std::shared_ptr<const AbstractAgent> agent) {
  agents_.insert_or_assign(std::move(kind), std::move(agent));
}

void Registry::write(Emitter& emitter, const AbstractDocumented& object) const {
  const std::string kind = object.documentedKind();
  const AbstractAgent& agent = agentOf(kind);
  emitter.startMap(("!" + kind).c_str());
  agent.write(emitter, object);
  emitter.endMap();
}

std::shared_ptr<AbstractDocumented> Registry::read(Parser& parser) const {
  const Event start = parser.take(EventKind::kMapStart);
  const std::string_view tag = start.tag();
  auto object = agentOf(tag.starts_with('!') ? tag.substr(1) : tag).read(parser);
  parser.take(EventKind::kMapEnd);
  return object;
}

const AbstractAgent& Registry::agentOf(std::string_view kind) const {
  const auto found = agents_.find(kind);
  if (found == agents_.end()) throw Exception(fmt::format("Registry agent required for '{}'.", kind));
  return *found->second;
}

}  // namespace tav::yaml
