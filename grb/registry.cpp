#include "grb/registry.h"

#include <atomic>

namespace grb {
namespace {

std::atomic<std::uint64_t> lastSerial{0};

}  // namespace

Registry::Registry() : serial_(++lastSerial) {}

}  // namespace grb
