#include "tav/attr/exception.h"

#include <utility>

namespace tav::attr {

Exception::Exception(std::string message, std::string signature, Location location)
    : tav::Exception("Attribute", std::move(message), std::nullopt, std::move(signature), location) {}

Exception Exception::unsupportedSet(std::string signature, Location location) {
  return {"Setting a value is not supported.", std::move(signature), location};
}

Exception Exception::unsupportedReset(std::string signature, Location location) {
  return {"Resetting is not supported.", std::move(signature), location};
}

Exception Exception::unsupportedItemAdd(std::string signature, Location location) {
  return {"Adding a value is not supported.", std::move(signature), location};
}

Exception Exception::unsupportedDefault(std::string signature, Location location) {
  return {"There is no default value.", std::move(signature), location};
}

}  // namespace tav::attr
