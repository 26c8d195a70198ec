#pragma once

#include <span>

#include "brel/expr/interval.h"

namespace brel::expr {

// Of a sum, from the ranges of its children. As many coefficients as children.
Range rangeOfSum(const Graph& graph, double constant, std::span<const NodeId> children,
                 std::span<const double> coefficients);
// Of any other operation on nodes of the graph; value and points: those of the node.
Range rangeOfCall(const Graph& graph, Op op, double value, std::span<const NodeId> children,
                  std::span<const Point> points);
// Bounds of whole numbers, as whole numbers. Those that miss one by less than the solver's tolerance stand for it.
Interval wholeBounds(Interval a);

}  // namespace brel::expr
