#include "brel/rewrite/rules/whole.h"

namespace brel::rewrite {

void keepWithin(Rewriter& rewriter, NodeId node, Range range) {
  Graph& graph = rewriter.graph();
  rewriter.addRow(graph.subtract(node, range.low), RowType::greaterOrEqual, "low");
  rewriter.addRow(graph.subtract(node, range.high), RowType::lessOrEqual, "high");
}

void keepWithinWhen(Rewriter& rewriter, Literal when, NodeId node, Range range) {
  Graph& graph = rewriter.graph();
  rewriter.addIndicator(when, graph.subtract(node, range.low), RowType::greaterOrEqual, "low");
  rewriter.addIndicator(when, graph.subtract(node, range.high), RowType::lessOrEqual, "high");
}

void keepBySign(Rewriter& rewriter, NodeId x, NodeId node, Range positive, Range negative) {
  Graph& graph = rewriter.graph();
  const Interval bounds = graph.interval(x);
  if (bounds.lower >= 0) return keepWithin(rewriter, node, positive);
  if (bounds.upper <= 0) return keepWithin(rewriter, node, negative);
  const NodeId definition = graph.call(Op::lessEqual, graph.negate(x));
  const int isPositive = graph.column(rewriter.addBinary(definition, "sign"));
  rewriter.addIndicator({isPositive, true}, x, RowType::greaterOrEqual, "sign");
  rewriter.addIndicator({isPositive, false}, x, RowType::lessOrEqual, "sign");
  keepWithinWhen(rewriter, {isPositive, true}, node, positive);
  keepWithinWhen(rewriter, {isPositive, false}, node, negative);
}

}  // namespace brel::rewrite
