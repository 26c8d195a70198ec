#pragma once

#include <fmt/core.h>

#include <string>

#include "tav/attr/lib/range_info.h"

// What messages say to users about numbers and their bounds.
namespace tav::attr::lib {

// What stands for infinity in descriptions, as in solvers. All beyond it means the same.
inline constexpr double kSolverInfinity = 1e100;

// A number as help and messages show it, infinity by its name.
inline std::string shown(int value) { return fmt::format("{}", value); }
inline std::string shown(double value) {
  if (value >= kSolverInfinity) return "infinity";
  if (value <= -kSolverInfinity) return "-infinity";
  return fmt::format("{}", value);
}

// The values that a description allows, such as "a whole number from 0 to 3".
inline std::string allowed(const RangeInfo<int>& info) {
  return fmt::format("a whole number from {} to {}", info.lower(), info.upper());
}
inline std::string allowed(const RangeInfo<double>& info) {
  return fmt::format("a number from {} to {}", shown(info.lower()), shown(info.upper()));
}

}  // namespace tav::attr::lib
