#pragma once

#include <algorithm>
#include <string>
#include <string_view>

// Letters of names, without a locale: names are ASCII and mean the same on every machine.
namespace tav::util {

constexpr char lowerCased(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

inline std::string lowerCased(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), [](char c) { return lowerCased(c); });
  return lower;
}

}  // namespace tav::util
