#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "tav/yaml/documented.h"
#include "tav/yaml/emitter.h"
#include "tav/yaml/parser.h"

namespace tav::yaml {

// Knows how objects of one kind are written and read. Both leave the map itself, its start and its end, to the
// registry: an agent handles keys and values only.
class AbstractAgent {
 public:
  virtual ~AbstractAgent() = default;
  virtual void write(Emitter& emitter, const AbstractDocumented& object) const = 0;
  virtual std::shared_ptr<AbstractDocumented> read(Parser& parser) const = 0;
};

// The agents by kind. An object of a kind without an agent is refused with tav::Exception "Registry agent required for
// '<kind>'.".
class Registry {
 public:
  // Replaces the agent that the kind had.
  void add(std::string kind, std::shared_ptr<const AbstractAgent> agent);

  // Writes the object as one map.
  void write(Emitter& emitter, const AbstractDocumented& object) const;

  // Reads one map.
  std::shared_ptr<AbstractDocumented> read(Parser& parser) const;

 private:
  const AbstractAgent& agentOf(std::string_view kind) const;

  std::map<std::string, std::shared_ptr<const AbstractAgent>, std::less<>> agents_;
};

}  // namespace tav::yaml
