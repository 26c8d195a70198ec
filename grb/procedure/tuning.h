#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "grb/data.h"

namespace grb {

// The names of a list that are separated by commas or blanks; those that hold such are in single or double quotes.
std::vector<std::string> listedFiles(std::string_view list);

// Lets Gurobi look for parameters that suit the models of the files in option "tuning", under the parameters of the
// record's own model, which itself is not tuned, and writes up to 100 results to files gurobi.o99, gurobi.o98 ... in
// the current folder, of which the lowest number is the best. Files written before an error stay. Raises
// GurobiException, and tav::UserException for a file that cannot be written.
void tune(Data& data);

}  // namespace grb
