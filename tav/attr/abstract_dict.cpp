#include "tav/attr/abstract_dict.h"

#include <algorithm>

#include "tav/util/ascii.h"

namespace tav::attr {

bool isSameName(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return util::lowerCased(x) == util::lowerCased(y); });
}

}  // namespace tav::attr
