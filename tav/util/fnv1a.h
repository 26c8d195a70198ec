#pragma once

#include <cstdint>
#include <string_view>

namespace tav::util {

// The 64-bit FNV-1a hash of a text: the same on every machine and in every run.
constexpr std::uint64_t fnv1a(std::string_view text) {
  std::uint64_t hash = 0xcbf29ce484222325;
  for (const char byte : text) {
    hash ^= static_cast<unsigned char>(byte);
    hash *= 0x100000001b3;
  }
  return hash;
}

}  // namespace tav::util
