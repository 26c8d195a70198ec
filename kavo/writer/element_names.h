#pragma once

#include <array>
#include <string_view>

#include "kavo/model/model.h"

namespace kavo::writer {

// The names of the elements of one kind, as elementName (kavo/model/element.h) gives them, without an allocation each.
class ElementNames {
 public:
  ElementNames(const Model& model, int kind) : model_(model), kind_(kind) {}
  // Valid until the next call.
  std::string_view at(std::size_t index);

 private:
  const Model& model_;
  int kind_;
  std::array<char, 40> default_{};
};

}  // namespace kavo::writer
