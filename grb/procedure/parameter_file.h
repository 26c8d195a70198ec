#pragma once

#include <string>
#include <vector>

#include "grb/gurobi/model.h"
#include "tav/opt/log.h"

namespace grb {

// A name that a parameter file gives a value to, at its first line (counted from 1). A name in another case is the
// same.
struct NamedLine {
  std::string name;
  int line;
};

// The names in a parameter file, in its order: the first word of each line that is neither empty nor a comment (#),
// ended by white space or an equals sign. Of a compressed file, which its extension tells, none. Raises tav::Exception
// when the file cannot be read or is no text.
std::vector<NamedLine> namesInParameterFile(const std::string& file);

// Reads a parameter file into the parameters of the model. Gurobi skips names that it does not know; a warning with the
// line is logged for each of them first. Raises as namesInParameterFile, and GurobiException.
void readParameterFile(GurobiModel& model, tav::opt::AbstractLog& log, const std::string& file);

// Raises tav::Exception when it can be told beforehand that a file of this name cannot be written.
void requireWritable(const std::string& file);

}  // namespace grb
