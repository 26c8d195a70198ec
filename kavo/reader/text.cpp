#include "kavo/reader/text.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>

#include "kavo/model/model.h"
#include "kavo/reader/number.h"

namespace kavo::reader {

std::string quoted(std::string_view word) {
  constexpr std::size_t kMost = 64;
  return word.size() <= kMost ? fmt::format("\"{}\"", word) : fmt::format("\"{}...\"", word.substr(0, kMost));
}

double numberOrNan(std::string_view word) {
  const char *first = word.data(), *last = first + word.size();
  double value = kUnknown;
  return parseNumber(first, last, value) == last ? value : kUnknown;
}

double withInfinity(double value) {
  constexpr double kInfinite = std::numeric_limits<double>::infinity();
  return value >= kInfinity ? kInfinite : value <= -kInfinity ? -kInfinite : value;
}

bool isWord(std::string_view word, std::string_view capitals) {
  return std::equal(word.begin(), word.end(), capitals.begin(), capitals.end(),
                    [](char a, char b) { return upper(a) == b; });
}

}  // namespace kavo::reader
