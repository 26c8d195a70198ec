#include "grb/registry.h"

#include <atomic>

namespace grb {
namespace {

std::atomic<std::uint64_t> lastSerial{0};

}  // namespace

Registry::Registry() : serial_(++lastSerial) {}

tav::idx::lib::Range Registry::add(int n) {
  const tav::idx::lib::Range positions(count_, n);
  count_ += n;
  return positions;
}

}  // namespace grb
