#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string>

#include "tests/reader_nl/nl_text.h"

namespace kavo::reader {

// Writes the pieces of a binary file one after the other.
class Bytes {
 public:
  Bytes(const Counts& counts, bool big)
      : text_(header(counts, 'b')), swap_(big == (std::endian::native == std::endian::little)) {}

  Bytes& c(char letter) { return text_ += letter, *this; }
  Bytes& i(std::int32_t value) { return raw(value); }
  Bytes& s(std::int16_t value) { return raw(value); }
  Bytes& d(double value) { return raw(value); }
  Bytes& name(const std::string& text) { return i(static_cast<std::int32_t>(text.size())), text_ += text, *this; }
  const std::string& text() const { return text_; }

 private:
  template <class T>
  Bytes& raw(T value) {
    char bytes[sizeof(T)];
    std::memcpy(bytes, &value, sizeof(T));
    if (swap_) std::reverse(bytes, bytes + sizeof(T));
    text_.append(bytes, sizeof(T));
    return *this;
  }

  std::string text_;
  bool swap_;
};

// A model with every segment and every sort of node, as text and in bytes of either order.
std::string textOfAll();
std::string bytesOfAll(bool big);

}  // namespace kavo::reader
