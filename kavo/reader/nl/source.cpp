#include "kavo/reader/nl/source.h"

#include <fmt/format.h>

#include <algorithm>

#include "kavo/error.h"

namespace kavo::reader::nl {

namespace {

constexpr std::size_t kShown = 30;  // characters of a wrong piece that a message shows

}  // namespace

std::string Source::where() const {
  std::string place =
      binary_ ? fmt::format("byte {}", token_ - begin_) : fmt::format("line {}", 1 + std::count(begin_, token_, '\n'));
  if (segment_ == kHeader) return fmt::format("{}, {}: header", file_, place);
  if (segment_ == kBetween) return fmt::format("{}, {}", file_, place);
  if (number_ < 0) return fmt::format("{}, {}: segment {}", file_, place, segment_);
  return fmt::format("{}, {}: segment {}{}", file_, place, segment_, number_);
}

std::string Source::found() const {
  if (token_ == end_) return ", found the end of the file";
  if (binary_ && segment_ != kHeader) {
    // What was read shows in its bytes: a letter, or a number's first byte.
    return fmt::format(", found byte 0x{:02x}", static_cast<unsigned char>(*token_));
  }
  if (*token_ == '\n') return ", found the end of the line";
  const char* limit = token_ + std::min(kShown, static_cast<std::size_t>(end_ - token_));
  const char* last =
      std::find_if(token_, limit, [](char c) { return c == '\n' || c == '\r' || c == ' ' || c == '\t'; });
  std::string piece(token_, last);
  for (char& c : piece) {
    if (c < ' ' || c > '~') c = '?';
  }
  return fmt::format(", found \"{}\"", piece);
}

void Source::fail(std::string_view expected) const {
  throw Error(KAVO_FILE, fmt::format("{}: expected {}{}", where(), expected, found()));
}

void Source::refuse(std::string_view reason) const { throw Error(KAVO_FILE, fmt::format("{}: {}", where(), reason)); }

std::string_view TextSource::name(std::string_view expected) {
  skipBlanks();
  const char* last = std::find_if(place_, end_, [](char c) { return isBlank(c) || c == '\n'; });
  if (last == place_) fail(expected);
  const std::string_view name(place_, static_cast<std::size_t>(last - place_));
  place_ = last;
  return name;
}

std::string_view TextSource::string() {
  skipBlanks();
  int length = 0;
  const char* next = parseInteger(place_, end_, length);
  if (next == nullptr || next == end_ || *next != ':' || length < 0) fail("a string's length and a colon");
  place_ = next + 1;
  if (static_cast<std::size_t>(length) > left()) refuse("a string is longer than the rest of the file");
  const std::string_view text(place_, static_cast<std::size_t>(length));
  place_ += length;
  return text;
}

std::string_view BinarySource::name(std::string_view expected) {
  const int length = integer("the length of a name or string");
  if (length < 0 || static_cast<std::size_t>(length) > left()) fail(expected);
  const std::string_view name(place_, static_cast<std::size_t>(length));
  place_ += length;
  return name;
}

}  // namespace kavo::reader::nl
