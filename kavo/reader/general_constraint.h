#pragma once

#include <string_view>
#include <vector>

#include "kavo/model/model.h"

namespace kavo::reader {

// The functions of general constraints, result = function(operands), as files of Gurobi have them. Behind each: how
// many columns it takes, and which constants.
enum class Function {
  kMax,              // any number; any number of constants, operands like the columns, but one of either
  kMin,              // the same
  kAbs,              // 1
  kAnd,              // any number, all binary or integer within 0 and 1
  kOr,               // the same
  kNorm0,            // any number: how many are not 0
  kNorm1,            // any number
  kNorm2,            // any number
  kNormInfinity,     // any number
  kPiecewiseLinear,  // 1; x1, y1, x2, y2, ...: points, two at least, where x never goes down, and up at both ends
  kPolynomial,       // 1; coefficients, that of the highest power first, one at least
  kExp,              // 1
  kExpOfBase,        // 1; the base, above 0
  kLog,              // 1
  kLogToBase,        // 1; the base, above 0 and not 1
  kPower,            // 1; the exponent
  kSin,              // 1
  kCos,              // 1
  kTan,              // 1
  kLogistic,         // 1
};

// The word for a function in messages, such as "MAX".
std::string_view wordOf(Function function);

struct GeneralConstraint {
  Function function = Function::kMax;
  int result = 0;
  std::vector<int> columns;
  std::vector<double> constants;
};

// Appends the row  result - function(columns, constants) = 0. All columns must be in the model, with their final types
// and bounds. Error (KAVO_INVALID) tells what is wrong with the constraint; it does not tell the name.
void appendGeneralConstraint(Model& model, const GeneralConstraint& constraint, std::string_view name);

// Appends the row  result - f = 0, where f is the expression whose nodes were pushed since the last one was ended.
void appendFunctionRow(Model& model, int result, std::string_view name);

// Pushes a piecewise-linear function of a column on the current expression. points as for kPiecewiseLinear; Error
// (KAVO_INVALID) when they are not such.
void pushPiecewiseLinear(Model& model, const std::vector<double>& points, int column);

}  // namespace kavo::reader
