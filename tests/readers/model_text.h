#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "kavo/model/model.h"

namespace kavo::reader {

// The content as a gzip file has it.
std::string gzip(std::string_view content);

// Reads a text as a file whose path ends with `name`; compressed when the name ends with ".gz".
Model readAs(const std::string& name, std::string_view text);

// The message of the Error that reading ends with; fails the test when there is none or its status is another one.
std::string messageAs(const std::string& name, std::string_view text);

// Texts that are refused, and a part of the message, which names file and line as well.
struct BadText {
  std::string text, message;
};
void expectMessages(const std::string& name, const std::vector<BadText>& texts);

// A model in one line per element:
//   min obj: 1 x -2 y +3          objectives: sense, name, terms, constant if it is not 0
//   c1 [-inf, 4]: 1 x 3 y         rows: name, sides, terms; behind those, where there are such:
//     + 2 x*y  {x sin}  if b=1    quadratic terms, the expression in postfix order, the switch (objectives: as well)
//   s S1: x 1, y 2                special ordered sets: name, type, members with weights
//   x C [0, inf]                  columns: name, C, B, I, S or N, bounds
std::string describe(const Model& model);
// The first line of it that begins with this name.
std::string lineOf(const Model& model, const std::string& name);

}  // namespace kavo::reader
