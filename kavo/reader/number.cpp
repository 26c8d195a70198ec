#include "kavo/reader/number.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

namespace kavo::reader {

namespace {

// Whether a number that no double can hold is too large; otherwise it is too small. first .. last is its text without a
// sign. What counts is the power of ten of its first digit that is not 0.
bool isTooLarge(const char* first, const char* last) {
  const char* exponentMark = std::find_if(first, last, [](char c) { return c == 'e' || c == 'E'; });
  const char* point = std::find(first, exponentMark, '.');
  const char* leading = std::find_if(first, exponentMark, [](char c) { return c != '0' && c != '.'; });
  const long long power = leading < point ? point - leading : point + 1 - leading;
  if (exponentMark == last) return power > 0;
  const char* digits = exponentMark + 1;
  const bool below = *digits == '-';
  if (*digits == '-' || *digits == '+') ++digits;
  long long exponent = 0;
  const auto result = std::from_chars(digits, last, exponent);
  if (result.ec != std::errc()) return !below;
  // Sum without overflow: the power is at most the length of a text.
  return below ? power > exponent : exponent > -power;
}

}  // namespace

const char* parseDouble(const char* first, const char* last, double& value) {
  const bool negative = first != last && *first == '-';
  if (first != last && (*first == '-' || *first == '+')) ++first;
  if (first == last || *first == '-') return nullptr;  // from_chars would take a second sign
  double size = 0;
  const auto result = std::from_chars(first, last, size);
  if (result.ec == std::errc::invalid_argument) return nullptr;
  if (result.ec == std::errc::result_out_of_range) {
    size = isTooLarge(first, result.ptr) ? std::numeric_limits<double>::infinity() : 0.0;
  }
  value = negative ? -size : size;
  return result.ptr;
}

}  // namespace kavo::reader
