#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace grb {

// A line of a parameter file that gives a value to a name, as Gurobi reads it: the value is the first word behind the
// name and one equals sign, which may be missing.
struct ParameterLine {
  std::string name;
  std::string value;
  bool hasMore;  // than a name, a value and a comment; Gurobi passes over the rest
  int number;    // from 1
};

// The lines of a parameter file but for empty ones and comments (#). Raises tav::UserException when the file cannot be
// read, is compressed (which its extension tells, to Gurobi as well) or is no text.
std::vector<ParameterLine> linesOfParameterFile(const std::string& file);

// A word of a file as it can be shown whatever bytes it is made of, cut short where it would flood a message.
std::string shownWord(std::string_view word);

}  // namespace grb
