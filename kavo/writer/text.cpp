#include "kavo/writer/text.h"

#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cmath>
#include <utility>

#include "kavo/writer/file.h"

namespace kavo::writer {

Text::Text(int descriptor, std::string path) : descriptor_(descriptor), path_(std::move(path)) {
  buffer_.reserve(kFlushAt + 512);
}

Text& Text::operator<<(std::string_view text) {
  buffer_ += text;
  flushWhenFull();
  return *this;
}

Text& Text::operator<<(char c) {
  buffer_ += c;
  flushWhenFull();
  return *this;
}

Text& Text::number(double value) {
  if (std::isnan(value)) return *this << "NaN";
  if (std::isinf(value)) return *this << (value > 0 ? "Infinity" : "-Infinity");
  char digits[32];
  constexpr double kExactlyWhole = 1e15;
  const bool whole = value == std::trunc(value) && std::fabs(value) < kExactlyWhole;
  const auto end = whole ? std::to_chars(digits, digits + sizeof digits, static_cast<long long>(value))
                         : std::to_chars(digits, digits + sizeof digits, value);
  return *this << std::string_view(digits, static_cast<std::size_t>(end.ptr - digits));
}

Text& Text::number(std::size_t value) {
  char digits[32];
  const auto end = std::to_chars(digits, digits + sizeof digits, value);
  return *this << std::string_view(digits, static_cast<std::size_t>(end.ptr - digits));
}

void Text::flush() {
  const char* next = buffer_.data();
  std::size_t left = buffer_.size();
  while (left > 0) {
    const ssize_t written = write(descriptor_, next, left);
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) failToWrite(path_, errno);
    next += written;
    left -= static_cast<std::size_t>(written);
  }
  buffer_.clear();
}

}  // namespace kavo::writer
