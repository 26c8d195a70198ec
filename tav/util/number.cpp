#include "tav/util/number.h"

#include <locale.h>  // newlocale, which <clocale> need not have
#include <stdlib.h>  // strtod_l, the same

#include <charconv>
#include <string>
#include <system_error>

namespace tav::util {

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
  return convert(text, value) == std::errc() ? std::optional(value) : std::nullopt;
}

std::optional<double> toDouble(std::string_view text) {
  double value = 0;
  const std::errc error = convert(text, value);
  if (error == std::errc()) return value;
  if (error != std::errc::result_out_of_range) return std::nullopt;
  // from_chars does not tell on which side.
  static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
  return strtod_l(std::string(text).c_str(), nullptr, plain);
}

}  // namespace tav::util
