#include "kavo/writer/element_names.h"

#include <algorithm>

#include "kavo/model/element.h"

namespace kavo::writer {

std::string_view ElementNames::at(std::size_t index) {
  const std::string_view given = givenName(model_, kind_, index);
  if (!given.empty()) return given;
  const std::string made = elementName(model_, kind_, index);  // short enough to need no memory of its own
  return {default_.data(), made.copy(default_.data(), default_.size())};
}

}  // namespace kavo::writer
