#pragma once

#include <span>
#include <vector>

#include "brel/expr/graph.h"

namespace brel::expr {

// The values of the nodes first .. graph.size()-1 at a point (values of columns by position; shorter than the columns
// of the graph: NaN for those beyond, as for unknown ones). values has graph.size() entries, those before `first` are
// there already. Outside a function's domain NaN or infinite. Linear time.
void evaluate(const Graph& graph, std::span<const double> point, std::vector<double>& values, std::size_t first = 0);

}  // namespace brel::expr
