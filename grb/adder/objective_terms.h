#pragma once

#include <source_location>

#include "grb/adder/terms.h"
#include "grb/gurobi/model.h"

namespace grb {

// The refusal of an objective beside others that is not linear, or beside one that is not.
[[noreturn]] void refuseMultipleObjectives(const std::source_location& at = std::source_location::current());

// Writes linear terms as values of a variable attribute. Terms of one variable are summed, since the attribute is
// written by value and the last one would win; the list is a range when the positions form one contiguous run. Nothing
// is written for a function without terms.
void writeCoefficients(GurobiModel& model, const char* attribute, const LinearTerms& terms);

}  // namespace grb
