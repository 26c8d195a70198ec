#pragma once

#include <fmt/format.h>

#include <string_view>

#include "kavo/reader/mps/reading.h"

namespace kavo::reader::mps {

// A section may hold several sets of values, told apart by the set's name on every line. The first one is the model's;
// the others are left out, which a note says. A line without a set name belongs to the first.
class FirstSet {
 public:
  // Whether a line of that set counts.
  bool takes(Reading& reading, std::string_view name) {
    if (name == name_ || name.empty()) return true;
    if (name_.empty()) {
      name_ = name;
      return true;
    }
    if (!noted_) {
      reading.model.readNotes.push_back(
          fmt::format("section {} has several sets: {} is taken, {} (line {}) and any other are left out",
                      reading.section, quoted(name_), quoted(name), reading.lines.number()));
    }
    noted_ = true;
    return false;
  }

 private:
  std::string_view name_;
  bool noted_ = false;
};

}  // namespace kavo::reader::mps
