#pragma once

#include <string_view>

namespace brel::settings {

// The typed value of a text; false when it has none. The whole text must be the number: an int has digits only behind
// its sign; a double may be "inf" or "-inf", never NaN.
bool parse(std::string_view text, int& value);
bool parse(std::string_view text, double& value);

}  // namespace brel::settings
