#pragma once

#include <span>
#include <vector>

#include "brel/expr/graph.h"
#include "brel/expr/refusal.h"
#include "kavo/link.h"

namespace brel::expr {

// What an operator of the host makes of its operands. Raises by `refusal` as HostExpressions says.
NodeId makeOperator(Graph& graph, const Refusal& refusal, kavo_operator op, std::span<const NodeId> operands);

// The points of the continuous piecewise-linear function with slope, breakpoint, slope, ..., slope that is 0 at x = 0.
// Empty slopes between equal breakpoints are left out. At least two points.
std::vector<Point> pointsOfSlopes(std::span<const double> given);

}  // namespace brel::expr
