#include "grb/adder/block_reading.h"

#include <fmt/core.h>

#include <algorithm>
#include <cstring>

#include "grb/adder/adder.h"
#include "grb/gurobi/constants.h"

namespace grb {

void requireCount(std::string_view what, int size, int count) {
  if (size != count) throw tav::CheckException::failedEqualTo(what, size, {"count", count});
}

int elementCount(const tav::attr::ContainerDict& standard) {
  int count = 0;
  for (const int key : standard.keys()) count = std::max(count, standard.get(key).size());
  return count;
}

void requireCounts(const tav::attr::ContainerDict& group, int count) {
  for (const int key : group.keys()) {
    requireCount(group.name(key), group.get(key).size(), count);
  }
}

BlockNames::BlockNames(const Data& data, const tav::attr::BaseContainer& names)
    : names_(data.options.value(IntOption::names) > 0 ? names : tav::attr::BaseContainer()) {
  for (std::size_t i = 0; i < span().size(); ++i) {
    const std::size_t length = std::strlen(span()[i]);
    if (length > kMaxNameLength) failElement(static_cast<int>(i), fmt::format("its name has {} bytes", length));
  }
}

}  // namespace grb
