#include "grb/adder/block_reading.h"

namespace grb {

std::vector<const char*> readNames(const Data& data, const tav::attr::BaseContainer& names) {
  return data.names > 0 ? readAll<const char*>(names) : std::vector<const char*>();
}

}  // namespace grb
