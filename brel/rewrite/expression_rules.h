#pragma once

#include "brel/rewrite/lowering.h"

// The rules for operators that the solver does not take in nonlinear functions, each in a file of its own. A rule gets
// a node whose children are lowered and gives its lowered form: a node of operators that the solver knows, over the
// columns and rows that the rule made.
namespace brel::rewrite {

// abs, min, max and norms: a column and a function constraint.
NodeId lowerFunction(Lowering& in, NodeId node);
// sinh and cosh: by exp.
NodeId lowerHyperbolic(Lowering& in, NodeId node);
// asin, acos, atan, asinh, acosh, atanh, atan2: a column in the function's range whose inverse function gives the
// argument.
NodeId lowerInverse(Lowering& in, NodeId node);
// x ^ y is written as exp(y log x), for positive x only: tells so where x could be negative.
NodeId lowerGeneralPower(Lowering& in, NodeId node);
// floor, ceil, round, trunc: a whole column within the distance that the function allows.
NodeId lowerRounding(Lowering& in, NodeId node);
// mod and integer division: x = y q + r.
NodeId lowerDivision(Lowering& in, NodeId node);
// Piecewise-linear terms: weights of the points, of which a special ordered set lets two neighbours count.
NodeId lowerPiecewise(Lowering& in, NodeId node);
// if-then-else: indicator rows; constants make a linear function of the condition.
NodeId lowerIfThenElse(Lowering& in, NodeId node);

// Truth values: a binary column or its complement. `enforce...` makes them hold, as rows; with a literal only where
// that is true.
NodeId lowerComparison(Lowering& in, NodeId node);
NodeId lowerAndOr(Lowering& in, NodeId node);
NodeId lowerIfAndOnlyIf(Lowering& in, NodeId node);
NodeId lowerAllDifferent(Lowering& in, NodeId node);
void enforceComparison(Lowering& in, NodeId node, bool holds);
void enforceComparisonWhen(Lowering& in, NodeId node, Literal when);
void enforceAllDifferent(Lowering& in, NodeId node);

}  // namespace brel::rewrite
