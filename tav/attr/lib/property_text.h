#pragma once

#include <fmt/core.h>

#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include "tav/util/number.h"
#include "tav/yaml/convert.h"

// Properties of descriptions as text.
namespace tav::attr::lib {

inline constexpr std::string_view kInfoProperties[] = {"name", "ref", "n_max", "s_set", "doc", "def"};
inline constexpr std::string_view kRangeProperties[] = {"name", "ref", "n_max", "s_set", "doc", "def", "lo", "up"};

// The value a text stands for, absent when it stands for none.
template <class T>
std::optional<T> parseText(std::string_view text) {
  if constexpr (std::is_same_v<T, int>) {
    return util::toInt(text);
  } else if constexpr (std::is_same_v<T, double>) {
    return yaml::toDouble(text);
  } else {
    return T(text);
  }
}

template <class T>
std::string textOf(const std::optional<T>& value) {
  return value ? fmt::format("{}", *value) : std::string();
}

// Raises the error of AbstractBaseInfo::setProperty.
[[noreturn]] void throwUnsupportedProperty(std::string_view property, std::string_view text);

}  // namespace tav::attr::lib
