#include "brel/rewrite/expression_rules.h"

namespace brel::rewrite {

// The solver takes a power only with a constant base or exponent.
NodeId lowerGeneralPower(Lowering& in, NodeId node) {
  Graph& graph = in.graph();
  const NodeId base = in.argument(node, 0), exponent = in.argument(node, 1);
  if (graph.interval(base).lower < 0) {
    in.rewriter().note("a power whose base and exponent vary is taken for positive bases only");
  }
  return graph.call(Op::generalPower, base, exponent);
}

}  // namespace brel::rewrite
