#pragma once

#include <string_view>
#include <type_traits>

namespace tav::util {

// The name of a number type as messages spell it, the same on every platform: a 64-bit integer is "__int64" whether the
// platform calls it long or long long.
template <class T>
constexpr std::string_view numberSpelling() {
  static_assert(std::is_arithmetic_v<T>);
  if constexpr (std::is_same_v<T, double>) {
    return "double";
  } else if constexpr (std::is_same_v<T, float>) {
    return "float";
  } else if constexpr (std::is_same_v<T, bool>) {
    return "bool";
  } else if constexpr (sizeof(T) == 8) {
    return std::is_signed_v<T> ? "__int64" : "unsigned __int64";
  } else if constexpr (sizeof(T) == 4) {
    return std::is_signed_v<T> ? "int" : "unsigned int";
  } else if constexpr (sizeof(T) == 2) {
    return std::is_signed_v<T> ? "short" : "unsigned short";
  } else {
    return std::is_signed_v<T> ? "signed char" : "unsigned char";
  }
}

// The qualified name of any type as the compiler writes it ("grb::transform::Basis").
template <class T>
constexpr std::string_view typeName() {
  constexpr std::string_view kFunction = __PRETTY_FUNCTION__;  // "... [with T = name; ...]" or "... [T = name]"
  constexpr auto kStart = kFunction.find("T = ") + 4;
  constexpr auto kEnd = kFunction.find_first_of(";]", kStart);
  return kFunction.substr(kStart, kEnd - kStart);
}

}  // namespace tav::util
