#include "grb/adder/block_reading.h"

namespace grb {

void requireCounts(const tav::attr::ContainerDict& group, int count) {
  for (const int key : group.keys()) {
    const int size = group.get(key).size();
    if (size != count) throw tav::CheckException::failedEqualTo(group.name(key), size, {"count", count});
  }
}

}  // namespace grb
