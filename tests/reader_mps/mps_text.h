#pragma once

#include <string>
#include <string_view>

#include "kavo/model/model.h"

namespace kavo::reader {

// A model of every section in fixed columns whose fields blanks tell apart as well, and one with names with blanks.
extern const std::string kSample, kBlankSample;
// A model of every section that linear models do not have.
extern const std::string kBeyondSample;

// Reads a text as a file named after `name`; compressed when the name ends with ".gz".
Model readText(std::string_view text, const std::string& name = "model.mps");

// The message of the Error that reading ends with; fails the test when there is none or its status is another one.
std::string messageOf(std::string_view text, kavo_status status = KAVO_FILE);

// A model in one line per element:
//   min obj: 1 x -2 y +3          objectives: sense, name, terms, constant if it is not 0
//   c1 [-inf, 4]: 1 x 3 y         rows: name, sides, terms; behind those, where there are such:
//     + 2 x*y  {x sin}  if b=1    quadratic terms, the expression in postfix order, the switch (objectives: as well)
//   s S1: x 1, y 2                special ordered sets: name, type, members with weights
//   x C [0, inf]                  columns: name, C, B, I, S or N, bounds
std::string describe(const Model& model);

// A text with lines of some sections put into a small model: continuous columns x and y, an integer column i, rows l, g
// and e of types L, G and E.
struct Extra {
  std::string head, rhs, ranges, bounds;
};
std::string with(const Extra& extra);
// The same model with sections at its end, given with their names; they begin on line 14.
std::string withSections(const std::string& sections);

}  // namespace kavo::reader
