#include "tav/yaml/convert.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>
#include <system_error>

namespace tav::yaml {

namespace {

// from_chars takes no plus sign, numbers may have one.
std::string_view withoutPlus(std::string_view text) {
  const bool hasPlus = text.size() > 1 && text[0] == '+' && text[1] != '-' && text[1] != '+';
  return hasPlus ? text.substr(1) : text;
}

// The error of the conversion; `invalid_argument` also when not every character was used.
template <class T>
std::errc convert(std::string_view text, T& value) {
  const std::string_view digits = withoutPlus(text);
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return end == digits.data() + digits.size() ? error : std::errc::invalid_argument;
}

}  // namespace

std::optional<int> toInt(std::string_view text) {
  int value = 0;
  return convert(text, value) == std::errc() ? std::optional<int>(value) : std::nullopt;
}

std::optional<double> toDouble(std::string_view text) {
  double value = 0;
  const std::errc error = convert(text, value);
  if (error == std::errc()) return value;
  // Out of range on either side: the wider type tells which.
  long double wide = 0;
  const bool isTiny =
      error == std::errc::result_out_of_range && convert(text, wide) == std::errc() && std::fabs(wide) < 1;
  return isTiny ? std::optional<double>(static_cast<double>(wide)) : std::nullopt;
}

std::optional<bool> toBool(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  if (lower == "true" || lower == "yes" || lower == "1" || lower == "on") return true;
  if (lower == "false" || lower == "no" || lower == "0" || lower == "off") return false;
  return std::nullopt;
}

}  // namespace tav::yaml
