#include "tav/attr/abstract_dict.h"

#include <algorithm>

namespace tav::attr {

namespace {

// Without a locale: names are ASCII and mean the same on every machine.
char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

bool isSameName(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return lower(x) == lower(y); });
}

}  // namespace tav::attr
