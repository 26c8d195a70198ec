// Calls as text, one argument after the other.
#pragma once

#include <fmt/format.h>

#include <array>
#include <cstddef>
#include <string>
#include <type_traits>
#include <utility>

#include "tests/double/array_args.h"
#include "tests/double/handles.h"

namespace gurobi_double {

inline std::string oneText(int value) { return fmt::format("{}", value); }
inline std::string oneText(unsigned value) { return fmt::format("{}", value); }
inline std::string oneText(std::size_t value) { return fmt::format("{}", value); }
inline std::string oneText(double value) { return fmt::format("{}", value); }
inline std::string oneText(char value) { return fmt::format("'{}'", value); }
inline std::string oneText(const char* value) { return value != nullptr ? fmt::format("\"{}\"", value) : "null"; }
inline std::string oneText(GRBenv* env) { return env != nullptr ? env->label : "null"; }
inline std::string oneText(GRBmodel* model) { return model != nullptr ? model->label : "null"; }

template <typename T>
std::string arrayText(const T* values, long length) {
  if (values == nullptr) return "null";
  std::string text;
  for (long i = 0; i < length; ++i) text += (i > 0 ? ", " : "") + oneText(values[i]);
  return "[" + text + "]";
}

/// The length at a place of the argument list, where it is an integer.
template <typename T>
long asLength(const T& value) {
  if constexpr (std::is_integral_v<T>) return static_cast<long>(value);
  return 0;
}

inline GRBmodel* modelOf(GRBmodel* model) { return model; }
template <typename T>
GRBmodel* modelOf(const T&) {
  return nullptr;
}

template <std::size_t kCount>
long lengthAt(int place, const std::array<long, kCount>& lengths, const GRBmodel* model) {
  if (place >= 0) return lengths[static_cast<std::size_t>(place)];
  return model != nullptr ? model->total(place == kPerRow ? Kind::kRow : Kind::kVar) : 0;
}

template <Fn kFn, std::size_t kPlace, typename T, std::size_t kCount>
std::string argumentText(const T& value, const std::array<long, kCount>& lengths, const GRBmodel* model) {
  constexpr int kLength = lengthPlace<kFn>(static_cast<int>(kPlace));
  constexpr bool kIsHandle = std::is_same_v<T, GRBenv*> || std::is_same_v<T, GRBmodel*>;
  if constexpr (kLength != kNoArray) {
    return arrayText(value, lengthAt(kLength, lengths, model));
  } else if constexpr (std::is_pointer_v<T> && !kIsHandle && !std::is_same_v<T, const char*>) {
    return value != nullptr ? "*" : "null";
  } else {
    return oneText(value);
  }
}

/// Such as: GRBaddconstr(m1, 2, [0, 1], [1, -2.5], '<', 4, "R0")
template <Fn kFn, typename... Args>
std::string callText(const Args&... args) {
  const std::array<long, sizeof...(Args) + 1> lengths{asLength(args)..., 0};
  const GRBmodel* model = nullptr;
  ((model = model != nullptr ? model : modelOf(args)), ...);
  std::string text;
  const auto append = [&]<std::size_t... kPlaces>(std::index_sequence<kPlaces...>) {
    ((text += (kPlaces > 0 ? ", " : "") + argumentText<kFn, kPlaces>(args, lengths, model)), ...);
  };
  append(std::index_sequence_for<Args...>{});
  return fmt::format("{}({})", grb::fnName(kFn), text);
}

}  // namespace gurobi_double
