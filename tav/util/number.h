#pragma once

#include <optional>
#include <string_view>

// Numbers in texts that people write. The whole text must be the number: no blanks around it, one sign at most. No
// locale is asked: the decimal point is '.'.
namespace tav::util {

// A decimal whole number that fits 32 bits.
std::optional<int> toInt(std::string_view text);

// The double next to a decimal number, or what "inf", "infinity" and "nan" (in any case) name. A number that is too
// large for any double is infinite, one that is too small is 0.
std::optional<double> toDouble(std::string_view text);

}  // namespace tav::util
