#include <cmath>

#include "brel/rewrite/expression_rules.h"

namespace brel::rewrite {

NodeId lowerLogBase(Lowering& in, NodeId node) {
  Graph& graph = in.graph();
  const NodeId logarithm = graph.call(Op::log, in.argument(node, 0));
  return graph.scale(logarithm, 1 / std::log(graph.value(node)));
}

}  // namespace brel::rewrite
