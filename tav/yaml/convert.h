#pragma once

#include <optional>
#include <string_view>

// The values of scalars. The whole text must be the value: no white space before or after. No locale is asked.
namespace tav::yaml {

// A decimal number that fits 32 bits.
std::optional<int> toInt(std::string_view text);

// A decimal floating-point number, "inf" or "nan". Absent on overflow; what is too small becomes zero or subnormal.
std::optional<double> toDouble(std::string_view text);

// "true", "yes", "1", "on" or "false", "no", "0", "off", in any case.
std::optional<bool> toBool(std::string_view text);

}  // namespace tav::yaml
