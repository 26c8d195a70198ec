#pragma once

#include <optional>

#include "grb/adder/terms.h"
#include "grb/data.h"

namespace grb {

class NonlinearStack;

// Additions that come with nonlinear functions. Each one is registered at once, so that the registries are right
// whatever fails next. The caller holds the model lock.

// Whether Gurobi will take the terms: finite numbers and variables that exist. `variables`: how many there are.
bool isUsable(const tav::math::LinearFunction<double>& function, int variables);

// Adds the row: terms, sense ('G', 'L' or 'E'), negated constant; its position.
int addCountedRow(Data& data, const LinearTerms& terms, char sense, const char* name);

struct RowEntry {
  int row;
  double coefficient;
};

// Adds a continuous variable without bounds and name, with an entry in one row or none; its position.
int addFreeVariable(Data& data, const std::optional<RowEntry>& entry, double objective);

// Adds the expression as the value of the variable `result`. what: the element that it belongs to.
void addTree(Data& data, const NonlinearStack& tree, const GeneralConstraint& what, int result, const char* name);

}  // namespace grb
