#pragma once

#include <span>
#include <string_view>

#include "brel/expr/graph.h"

namespace brel::expr {

// For messages, such as "atan2".
std::string_view operationName(Op op);

// lessEqual .. allDifferent.
inline bool isTruthOperation(Op op) { return op >= Op::lessEqual; }

// What a node computes from the values x of its children (any but constant, variable and sum). Outside of the
// function's domain NaN or infinite. value, points: those of the node. tolerance: a comparison with 0 takes what is at
// most that far above it for 0: lessEqual is true up to it, equal within it, less only below its negative, so that of e
// <= 0 and e > 0 one is true; floor, ceil, trunc and those that are made of them take what is that near to a whole
// number for it. Truth values are true above one half.
double apply(Op op, double value, std::span<const double> x, std::span<const Point> points, double tolerance = 0);

}  // namespace brel::expr
