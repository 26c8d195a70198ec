#pragma once

#include <string>

namespace tav::yaml {

class Emitter;

// An object that can be described in YAML.
class AbstractDocumented {
 public:
  virtual ~AbstractDocumented() = default;
  // By which its agent is found; written as the tag of its map.
  virtual std::string documentedKind() const = 0;
};

}  // namespace tav::yaml
