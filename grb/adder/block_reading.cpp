#include "grb/adder/block_reading.h"

#include <algorithm>

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

}  // namespace grb
