#pragma once

#include <map>
#include <string>
#include <variant>

#include "grb/gurobi/model.h"
#include "tav/opt/log.h"

namespace grb {

// Values of parameters, by name in lower case.
using ParameterValues = std::map<std::string, std::variant<int, double, std::string>>;

// Reads a parameter file into the parameters of the model, and adds to `before` what those it names were before, unless
// it is known there. Gurobi passes over what it does not understand, so the file is looked at first: a name that Gurobi
// does not know is told in the log with its line; a value that is not allowed is refused before anything is read. What
// Gurobi has not taken after all, because it takes it only before it starts, is refused after the read. Raises
// tav::UserException, which shows no text that may be secret, and GurobiException.
void readParameterFile(GurobiModel& model, tav::opt::AbstractLog& log, const std::string& file,
                       ParameterValues& before);

// Gives parameters their values back and forgets those that it has given back. Raises GurobiException.
void putBack(GurobiModel& model, ParameterValues& before);

// Raises tav::UserException when it can be told beforehand that a file of this name cannot be written.
void requireWritable(const std::string& file);

}  // namespace grb
