#include "brel/rewrite/expression_rules.h"

namespace brel::rewrite {

// (exp(x) - exp(-x)) / 2 and (exp(x) + exp(-x)) / 2. The argument is written twice, so a long one becomes a column.
NodeId lowerHyperbolic(Lowering& in, NodeId node) {
  Graph& graph = in.graph();
  NodeId x = in.lowered(graph.children(node)[0]);
  if (graph.degree(x) > expr::Degree::linear) x = in.rewriter().asColumn(x);
  const double sign = graph.op(node) == Op::sinh ? -0.5 : 0.5;
  const NodeId rising = graph.call(Op::exp, x);
  const NodeId falling = graph.call(Op::exp, graph.negate(x));
  return graph.sum(0, {{{rising, 0.5}, {falling, sign}}});
}

}  // namespace brel::rewrite
