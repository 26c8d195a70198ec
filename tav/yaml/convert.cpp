#include "tav/yaml/convert.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "tav/util/number.h"

namespace tav::yaml {

std::optional<double> toDouble(std::string_view text) {
  const auto value = util::toDouble(text);
  const bool hasDigits = text.find_first_of("0123456789") != std::string_view::npos;
  return value && std::isinf(*value) && hasDigits ? std::nullopt : value;
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
