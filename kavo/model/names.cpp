#include "kavo/model/names.h"

namespace kavo {

void Names::append(std::string_view name, std::size_t unnamed) {
  if (!any()) {
    if (name.empty()) return;
    text_.push_back('\0');  // the text at 0 is the name of all without one
    start_.assign(unnamed, 0);
  }
  if (name.empty()) {
    start_.push_back(0);
    return;
  }
  start_.push_back(text_.size());
  text_.insert(text_.end(), name.begin(), name.end());
  text_.push_back('\0');
}

void Names::appendUnnamed(std::size_t count) {
  if (any()) start_.resize(start_.size() + count, 0);
}

void Names::reserve(std::size_t elements, std::size_t characters) {
  start_.reserve(elements);
  text_.reserve(characters + elements + 1);
}

void Names::revert(Mark mark) {
  start_.resize(mark.elements);
  text_.resize(mark.characters);
}

}  // namespace kavo
