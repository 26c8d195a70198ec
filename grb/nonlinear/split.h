#pragma once

#include <vector>

#include "grb/adder/terms.h"
#include "grb/data.h"
#include "grb/nonlinear/summands.h"
#include "tav/math/symbol.h"

namespace grb {

// A function as Gurobi takes it in a row or an objective: linear terms, a constant and a sum of whatever is left. The
// remainder views the function's expression, which must live as long.
struct SplitFunction {
  std::vector<int> positions;
  std::vector<double> coefficients;
  double constant = 0;
  std::vector<Summand> remainder;

  LinearTerms linear() const { return {positions, coefficients, constant}; }
};

// Splits a linear function, a variable, a constant or an expression over this solver's variables. The summands of an
// expression are those of the sum at its root, found through additions, subtractions and changes of sign that stand one
// inside the other. A summand is linear when it is a constant, a variable, a linear function, or a constant multiple or
// fraction of one of them; terms stay in their order, terms of one variable are not merged. When no summand is linear,
// the remainder is the expression as it stands. A summand with an unknown variable or a number that is not finite is
// left in the remainder, for the encoder to refuse.
//
// Raises the support error "Input not supported" for other kinds of symbols and other solvers' linear functions, and a
// support error when the terms of a linear function are unsound or the constants add up to what is no number.
SplitFunction split(const tav::math::Symbol<double>& function, const Data& data);

}  // namespace grb
