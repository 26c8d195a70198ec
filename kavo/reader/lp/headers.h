#pragma once

#include <string_view>

#include "kavo/reader/lp/words.h"

namespace kavo::reader::lp {

enum class Section {
  kObjective,
  kRows,
  kLazy,
  kCuts,
  kBounds,
  kTypes,
  kSets,
  kPieces,
  kFunctions,
  kEnd,
};

// A way to write the head of a section, in capitals.
struct Header {
  std::string_view first, second;  // second: "" when one word is all
  Section section;
  std::string_view name;  // of the section, for messages
  int value = 0;          // of an objective its sense, of types the ColumnFlag values
  bool alone = false;     // counts only when nothing else is on the line: a word of other programs than Gurobi
};

// The header that stands at the current word, or nullptr. What is followed by ':' is a label, and what is followed by a
// relation a variable. The words of the header are not passed.
const Header* headerAt(const Words& words);

}  // namespace kavo::reader::lp
