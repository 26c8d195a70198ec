#include "brel/rewrite/expression_rules.h"

namespace brel::rewrite {

// The solver takes a power only with a constant base or exponent.
NodeId lowerGeneralPower(Lowering& in, NodeId node) {
  Graph& graph = in.graph();
  const std::vector<NodeId> children = in.loweredChildren(node);
  return graph.call(Op::exp, graph.product(children[1], graph.call(Op::log, children[0])));
}

}  // namespace brel::rewrite
