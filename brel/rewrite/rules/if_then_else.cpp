#include "brel/rewrite/expression_rules.h"

namespace brel::rewrite {

NodeId lowerIfThenElse(Lowering& in, NodeId node) {
  Graph& graph = in.graph();
  Rewriter& rewriter = in.rewriter();
  const std::vector<NodeId> children = in.loweredChildren(node);
  const NodeId condition = children[0], then = children[1], otherwise = children[2];
  if (graph.isConstant(then) && graph.isConstant(otherwise)) {
    const double difference = graph.value(then) - graph.value(otherwise);
    return in.finish(node, graph.sum(graph.value(otherwise), {{{condition, difference}}}));
  }
  const Literal when = rewriter.asLiteral(condition);
  const NodeId result = in.result(node, "if");
  rewriter.addIndicator(when, graph.subtract(result, then), RowType::equal, "then");
  rewriter.addIndicator({when.column, !when.positive}, graph.subtract(result, otherwise), RowType::equal, "else");
  return result;
}

}  // namespace brel::rewrite
