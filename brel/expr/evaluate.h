#pragma once

#include <span>
#include <vector>

#include "brel/expr/graph.h"

namespace brel::expr {

// The values of all nodes at a point, as graph.size() entries of values. point: values of columns by position; shorter
// than the columns of the graph: NaN for those beyond, as for unknown ones. Outside a function's domain NaN or
// infinite. Linear time.
//
// definitions: of the columns behind the point, the node that each is equal to, -1: unknown. A definition has a lower
// number than the node of its column.
//
// tolerance: how far above 0 a comparison takes a value for 0. Of e <= 0 and e > 0 always one is true: e <= 0 is true
// up to the tolerance, e = 0 within it, e < 0 only below its negative. floor, ceil, trunc, mod and integer division
// take what is that near to a whole number for it. 0: all is exact.
void evaluate(const Graph& graph, std::span<const double> point, std::vector<double>& values, double tolerance = 0,
              std::span<const NodeId> definitions = {});

}  // namespace brel::expr
