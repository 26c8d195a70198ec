#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace brel {

// FNV-1a, 64 bits, over the bytes of what it is shown: tells things apart that nobody has made to look alike.
class Hash {
 public:
  // `count` values; null is told apart from an empty array.
  template <class T>
  void add(const T* values, std::size_t count) {
    add(static_cast<long long>(values != nullptr));
    if (values != nullptr) mix(std::as_bytes(std::span(values, count)));
  }
  void add(long long value) { mix(std::as_bytes(std::span(&value, 1))); }
  void add(double value) { mix(std::as_bytes(std::span(&value, 1))); }
  void add(std::string_view text) {
    add(static_cast<long long>(text.size()));
    mix(std::as_bytes(std::span(text)));
  }
  std::uint64_t value() const { return value_; }

 private:
  void mix(std::span<const std::byte> bytes) {
    for (const std::byte byte : bytes) value_ = (value_ ^ std::to_integer<std::uint64_t>(byte)) * 0x100000001b3U;
  }

  std::uint64_t value_ = 0xcbf29ce484222325U;
};

}  // namespace brel
