#pragma once

#include <cstdint>

namespace kavo::reader {

// Numbers in text, always with '.' as the decimal point whatever the locale. Each function reads the longest number
// that begins at `first` and ends before `last`, stores it in `value`, and returns the place behind it, or nullptr when
// no number begins there. What may follow is the caller's affair; no blanks are skipped.

// The result of parseDouble where the fast way of parseNumber does not reach; the value is the nearest double. Also
// "inf", "infinity" and "nan" in any case, and one sign. Too large numbers are infinite, too small ones 0.
const char* parseDouble(const char* first, const char* last, double& value);

// A whole number with an optional sign. Numbers beyond the range of int are no numbers.
inline const char* parseInteger(const char* first, const char* last, int& value) {
  const bool negative = first != last && *first == '-';
  if (first != last && (*first == '-' || *first == '+')) ++first;
  const char* p = first;
  std::int64_t sum = 0;
  for (; p != last && static_cast<unsigned char>(*p - '0') < 10; ++p) {
    sum = 10 * sum + (*p - '0');
    if (sum > INT64_C(0x7fffffff)) return nullptr;
  }
  value = static_cast<int>(negative ? -sum : sum);
  return p == first ? nullptr : p;
}

// A real number: as parseDouble, and faster for what models mostly consist of. A mantissa below 2^53 times or divided
// by a power of ten up to 10^22 is one operation on two exact doubles, so its result is the nearest double too.
inline const char* parseNumber(const char* first, const char* last, double& value) {
  constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
  const auto isDigit = [](char c) { return static_cast<unsigned char>(c - '0') < 10; };
  const char* p = first;
  const bool negative = p != last && *p == '-';
  if (p != last && (*p == '-' || *p == '+')) ++p;
  const char* digits = p;
  std::uint64_t mantissa = 0;
  while (p != last && isDigit(*p)) mantissa = 10 * mantissa + static_cast<std::uint64_t>(*p++ - '0');
  auto count = p - digits;
  int exponent = 0;
  if (p != last && *p == '.') {
    const char* fraction = ++p;
    while (p != last && isDigit(*p)) mantissa = 10 * mantissa + static_cast<std::uint64_t>(*p++ - '0');
    exponent = static_cast<int>(fraction - p);
    count += p - fraction;
  }
  if (count == 0 || count > 19) return parseDouble(first, last, value);
  if (p != last && (*p == 'e' || *p == 'E')) {
    const char* q = p + 1;
    const bool below = q != last && *q == '-';
    if (q != last && (*q == '-' || *q == '+')) ++q;
    int written = 0;
    const char* start = q;
    while (q != last && isDigit(*q) && q - start < 5) written = 10 * written + (*q++ - '0');
    if (q == start || (q != last && isDigit(*q))) return parseDouble(first, last, value);
    exponent += below ? -written : written;
    p = q;
  }
  if (mantissa > (UINT64_C(1) << 53) || exponent < -22 || exponent > 22) return parseDouble(first, last, value);
  const double exact = static_cast<double>(mantissa);
  const double size = exponent < 0 ? exact / kPowers[-exponent] : exact * kPowers[exponent];
  value = negative ? -size : size;
  return p;
}

}  // namespace kavo::reader
