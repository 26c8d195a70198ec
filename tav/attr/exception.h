#pragma once

#include <string>

#include "tav/util/exception.h"

namespace tav::attr {

// An operation that an item or a container does not offer. The context of the error is the full signature of the
// refused operation.
class Exception : public tav::Exception {
 public:
  using Location = util::SourceLocation;

  static Exception unsupportedSet(std::string signature, Location location = Location::here());
  static Exception unsupportedReset(std::string signature, Location location = Location::here());
  static Exception unsupportedItemAdd(std::string signature, Location location = Location::here());
  static Exception unsupportedDefault(std::string signature, Location location = Location::here());

  const std::string& signature() const { return context(); }

 private:
  Exception(std::string message, std::string signature, Location location);
};

}  // namespace tav::attr
