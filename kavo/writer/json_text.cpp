#include "kavo/writer/json_text.h"

#include <fmt/format.h>

#include <cmath>
#include <utility>

namespace kavo::writer {

namespace {

// Length in bytes of the UTF-8 character at the front, 0 when there is none: overlong forms, surrogates and numbers
// beyond U+10FFFF are none.
std::size_t characterLength(std::string_view text) {
  const auto byte = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u; };
  const auto follows = [&](std::size_t i) { return (byte(i) & 0xC0u) == 0x80u; };
  const unsigned lead = byte(0), second = byte(1);
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead <= 0xDF) return follows(1) ? 2 : 0;
  if (lead >= 0xE0 && lead <= 0xEF) {
    const bool allowed = !(lead == 0xE0 && second < 0xA0) && !(lead == 0xED && second > 0x9F);
    return allowed && follows(1) && follows(2) ? 3 : 0;
  }
  if (lead >= 0xF0 && lead <= 0xF4) {
    const bool allowed = !(lead == 0xF0 && second < 0x90) && !(lead == 0xF4 && second > 0x8F);
    return allowed && follows(1) && follows(2) && follows(3) ? 4 : 0;
  }
  return 0;
}

bool plain(char c) { return c >= 0x20 && c < 0x7F && c != '"' && c != '\\'; }

}  // namespace

void JsonText::open(char bracket) {
  separate();
  text_ << bracket;
  first_ = true;
}

void JsonText::close(char bracket) {
  text_ << bracket;
  first_ = false;
}

void JsonText::separate() {
  if (!std::exchange(afterKey_, false) && !std::exchange(first_, false)) text_ << ',';
  first_ = false;
}

void JsonText::piece(std::string_view written) {
  separate();
  text_ << written;
}

void JsonText::key(std::string_view name) {
  separate();
  quoted(name);
  text_ << ':';
  afterKey_ = true;
}

void JsonText::value(std::string_view string) {
  separate();
  quoted(string);
}

void JsonText::value(const char* string) { string == nullptr ? null() : value(std::string_view(string)); }

void JsonText::value(double number) {
  if (std::isnan(number)) return null();
  if (std::isinf(number)) return piece(number > 0 ? "1e+100" : "-1e+100");
  separate();
  text_.number(number);
}

void JsonText::quoted(std::string_view string) {
  text_ << '"';
  while (!string.empty()) {
    std::size_t run = 0;
    while (run < string.size() && plain(string[run])) ++run;
    text_ << string.substr(0, run);
    string.remove_prefix(run);
    if (string.empty()) break;
    const char c = string.front();
    std::size_t length = characterLength(string);
    if (length > 1) {
      text_ << string.substr(0, length);
    } else if (length == 0) {
      text_ << "\\ufffd";
      length = 1;
    } else if (c == '"' || c == '\\') {
      text_ << '\\' << c;
    } else {
      text_ << fmt::format("\\u{:04x}", static_cast<unsigned>(c));
    }
    string.remove_prefix(length);
  }
  text_ << '"';
}

}  // namespace kavo::writer
