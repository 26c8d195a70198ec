#pragma once

#include <string>
#include <string_view>

namespace kavo::writer {

// Buffered text to a file descriptor. Numbers are the shortest that read back as the same value, whole numbers without
// exponent, infinities and NaN as "Infinity", "-Infinity", "NaN". No locale. Throws Error (KAVO_FILE) naming the path.
class Text {
 public:
  Text(int descriptor, std::string path);
  Text& operator<<(std::string_view text);
  Text& operator<<(char c);
  Text& number(double value);
  Text& number(std::size_t value);
  void flush();

 private:
  static constexpr std::size_t kFlushAt = 1 << 16;

  void flushWhenFull() {
    if (buffer_.size() >= kFlushAt) flush();
  }

  int descriptor_;
  std::string path_;
  std::string buffer_;
};

}  // namespace kavo::writer
