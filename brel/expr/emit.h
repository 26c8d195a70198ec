#pragma once

#include <cstdint>
#include <span>

#include "brel/expr/graph.h"
#include "tav/math/expression.h"

namespace brel::expr {

// Appends a node to `target` as a sub-expression of calls that the solver's encoder knows: Add, Multiply, Negate,
// Divide, Square, Power, SquareRoot, Exp, Log ... . A node that is used several times is written out each time. Raises
// SupportException for operators that have to be rewritten first. No recursion.
void emit(const Graph& graph, NodeId node, std::uint64_t space, tav::math::Expression<double>& target);

}  // namespace brel::expr
