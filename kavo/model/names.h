#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kavo {

// The names of elements 0 .. size-1 in one block of text, each ended with NUL, so that a name costs no allocation of
// its own. Empty while no element has a name; afterwards it has one entry per element, "" for those without.
class Names {
 public:
  // Appends the name of the next element. unnamed: how many elements before it were added without any name so far; used
  // when the first name arrives. A NUL ends a name.
  void append(std::string_view name, std::size_t unnamed);
  // Appends `count` elements without name; nothing happens while no element has one.
  void appendUnnamed(std::size_t count);
  void reserve(std::size_t elements, std::size_t characters);

  // A state to go back to when appending fails half-way.
  struct Mark {
    std::size_t elements, characters;
  };
  Mark mark() const { return {start_.size(), text_.size()}; }
  void revert(Mark mark);

  bool any() const { return !start_.empty(); }
  std::size_t size() const { return start_.size(); }
  // The name of element i, "" when it has none. Valid until the next append.
  const char* at(std::size_t i) const { return any() && i < start_.size() ? text_.data() + start_[i] : ""; }

  const char* text() const { return text_.data(); }
  const std::size_t* starts() const { return any() ? start_.data() : nullptr; }

 private:
  std::vector<char> text_;
  std::vector<std::size_t> start_;
};

}  // namespace kavo
