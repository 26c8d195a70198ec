#pragma once

#include <optional>
#include <string_view>

// The values of scalars, where tav/util/number.h does not read them as YAML does.
namespace tav::yaml {

// As util::toDouble, but absent on overflow.
std::optional<double> toDouble(std::string_view text);

// "true", "yes", "1", "on" or "false", "no", "0", "off", in any case; nothing before or after it.
std::optional<bool> toBool(std::string_view text);

}  // namespace tav::yaml
