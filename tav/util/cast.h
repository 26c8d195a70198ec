#pragma once

#include <fmt/core.h>

#include <concepts>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include "tav/util/spelling.h"

namespace tav {

namespace detail {

// Raises tav::Exception "Cast Error": "Cannot cast <value> from '<from>' to '<to>'."
[[noreturn]] void throwCastError(const std::string& value, std::string_view from, std::string_view to);

// Whether an integer type can hold a floating-point value exactly. The range is tested first: converting a value out of
// range is undefined. The type's largest value may not be a floating-point number, the power of two above it is.
template <std::integral To, std::floating_point From>
constexpr bool holdsExactly(From value) {
  constexpr From kAbove = static_cast<From>(To{1} << (std::numeric_limits<To>::digits - 1)) * 2;
  constexpr From kLowest = static_cast<From>(std::numeric_limits<To>::min());
  return value >= kLowest && value < kAbove && static_cast<From>(static_cast<To>(value)) == value;
}

template <class To, class From>
constexpr bool isExact(From value) {
  if constexpr (std::integral<To> && std::integral<From>) {
    return std::in_range<To>(value);
  } else if constexpr (std::integral<To>) {
    return holdsExactly<To>(value);
  } else {
    static_assert(std::integral<From>, "a cast between floating-point types is not a checked cast");
    const To converted = static_cast<To>(value);
    return holdsExactly<From>(converted) && static_cast<From>(converted) == value;
  }
}

}  // namespace detail

// The value as a `To`, unchanged, or tav::Exception "Cast Error" when `To` cannot hold it exactly: out of range, with a
// fraction, too many digits, infinite or not a number. Negative zero becomes zero.
template <class To, class From>
constexpr To numCast(From value) {
  if (!detail::isExact<To>(value)) [[unlikely]] {
    detail::throwCastError(fmt::format("{}", value), util::numberSpelling<From>(), util::numberSpelling<To>());
  }
  return static_cast<To>(value);
}

}  // namespace tav
