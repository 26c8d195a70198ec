#pragma once

#include <cstdint>

#include "brel/expr/graph.h"
#include "tav/math/expression.h"

namespace brel::expr {

// Appends a node to `target` as a sub-expression of calls that the solver's encoder knows: Add, Subtract, Multiply,
// Negate, Divide, Square, Power (base or exponent a constant), SignPower, SquareRoot, Exp, Log, Log2, Log10, Sigmoid,
// Sin, Cos, Tan, TanH. A logarithm to another base is a multiple of the natural one, x^y is exp(y log x). space: the
// variable space of all variables. A node that is used several times is written out each time. Raises SupportException
// for operations that have to be rewritten first, such as abs. No recursion.
void emit(const Graph& graph, NodeId node, std::uint64_t space, tav::math::Expression<double>& target);

}  // namespace brel::expr
