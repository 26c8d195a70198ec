// Function constraints: rows that say y = f(x) with one of the functions that Gurobi has a constraint for.
//
// A row is taken as such when its expression, which the row requires to be 0, is the difference of y and f, in any of
// the natural ways of writing that: y - f, f - y, -y + f, additions and changes of sign one inside the other, constants
// that are 0. y is a variable, or a linear function of one term, with coefficient 1 or -1. f is one call of a function
// of the catalogue below, whose arguments are plain symbols: variables, linear functions that are just a variable,
// constants. Anything else (y + f, 2 y - f, y - f - 1, arguments that are calculated) matches nothing.
//
// The families are to be tried in their order; within one, templates are tried in the order of their kinds. No two
// templates match one row, but for y = a^x and y = x^a, told apart by which operand is the constant; with two constants
// it is y = a^x, with none y = x^a.
//
//   family  kinds
//   1       0 abs, 1 log, 2 exp, 3 sin, 4 cos, 5 tan, 6 sigmoid of a variable
//   2       0 norm1, 1 norm2, 2 norm_inf of variables
//   3       0 log_a (base a), 1 exp_a (a to the power x), 2 pow (x to the power a)
//   4       0 poly, coefficients from the highest power to the constant
//   5       0 min, 1 max, 2 and, 3 or of variables
//
// Each family has two forms. The detecting one answers whether the expression matches one of its templates, and adds
// the constraint when it does. The adding one takes a kind and the symbols that a template has captured. Both raise
// support errors, before Gurobi is called, in this order: "Input not supported" (the result or an argument is no
// variable of this space), "Parameter not supported" (what must be constant is not, or Gurobi has no such function: a
// base that is not positive, the logarithm to base 1, numbers that are not finite), "Domain type not supported." (not
// an equality), "Constraint not supported" (a kind that the family does not have). That the variables exist is the
// caller's business.
//
// Callers hold the model lock and register what was added. No options are sent: the parameters of the model govern how
// Gurobi treats the functions.
#pragma once

#include <span>

#include "grb/gurobi/model.h"
#include "tav/math/symbol.h"

namespace grb {

// Where a function constraint goes. space: the variable space of the model. domainType: 0 greater or equal, 1 less or
// equal, 2 equal.
struct GenConstrTarget {
  GurobiModel* model;
  const char* name;
  unsigned long long space;
  int domainType;
};

bool addGenConstr1(GurobiModel* model, const char* name, unsigned long long space,
                   const tav::math::Symbol<double>& expr, int domainType);
void addGenConstr1(const GenConstrTarget& target, int kind, const tav::math::Symbol<double>& result,
                   const tav::math::Symbol<double>& argument);

// vector: a linear function whose variables are the elements; its coefficients are 1 and its constant is 0.
bool addGenConstr2(GurobiModel* model, const char* name, unsigned long long space,
                   const tav::math::Symbol<double>& expr, int domainType);
void addGenConstr2(const GenConstrTarget& target, int kind, const tav::math::Symbol<double>& result,
                   const tav::math::Symbol<double>& vector);

bool addGenConstr3(GurobiModel* model, const char* name, unsigned long long space,
                   const tav::math::Symbol<double>& expr, int domainType);
void addGenConstr3(const GenConstrTarget& target, int kind, const tav::math::Symbol<double>& result,
                   const tav::math::Symbol<double>& argument, const tav::math::Symbol<double>& parameter);

// coefficients: a vector.
bool addGenConstr4(GurobiModel* model, const char* name, unsigned long long space,
                   const tav::math::Symbol<double>& expr, int domainType);
void addGenConstr4(const GenConstrTarget& target, int kind, const tav::math::Symbol<double>& result,
                   const tav::math::Symbol<double>& argument, const tav::math::Symbol<double>& coefficients);

bool addGenConstr5(GurobiModel* model, const char* name, unsigned long long space,
                   const tav::math::Symbol<double>& expr, int domainType);
void addGenConstr5(const GenConstrTarget& target, int kind, const tav::math::Symbol<double>& result,
                   std::span<const tav::math::Symbol<double>> operands);

}  // namespace grb
