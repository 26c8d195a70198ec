#include "brel/settings/parse.h"

#include <charconv>
#include <cmath>

namespace brel::settings {
namespace {

template <class T>
bool parseWhole(std::string_view text, T& value) {
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  const auto [end, code] = std::from_chars(text.data(), text.data() + text.size(), value);
  return code == std::errc() && end == text.data() + text.size();
}

}  // namespace

bool parse(std::string_view text, int& value) { return parseWhole(text, value); }

bool parse(std::string_view text, double& value) { return parseWhole(text, value) && !std::isnan(value); }

}  // namespace brel::settings
