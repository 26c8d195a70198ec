#pragma once

#include <fmt/core.h>

#include <optional>
#include <string>
#include <string_view>

#include "tav/yaml/convert.h"

// Properties of descriptions as text.
namespace tav::attr::lib {

inline constexpr std::string_view kInfoProperties[] = {"name", "ref", "n_max", "s_set", "doc", "def"};
inline constexpr std::string_view kRangeProperties[] = {"name", "ref", "n_max", "s_set", "doc", "def", "lo", "up"};

// The value a text stands for, absent when it stands for none.
inline bool parseText(std::string_view text, std::optional<int>& value) {
  return (value = yaml::toInt(text)).has_value();
}
inline bool parseText(std::string_view text, std::optional<double>& value) {
  return (value = yaml::toDouble(text)).has_value();
}
inline bool parseText(std::string_view text, std::optional<std::string>& value) {
  value = text;
  return true;
}

template <class T>
std::string textOf(const std::optional<T>& value) {
  return value ? fmt::format("{}", *value) : std::string();
}

// Raises the error of AbstractBaseInfo::setProperty.
[[noreturn]] void throwUnsupportedProperty(std::string_view property, std::string_view text);

}  // namespace tav::attr::lib
