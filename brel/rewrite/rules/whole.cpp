#include "brel/rewrite/rules/whole.h"

namespace brel::rewrite {

void keepWithin(Rewriter& rewriter, NodeId node, Range range) {
  rewriter.addRow(rewriter.graph().sum(-range.low, {{{node, 1}}}), RowType::greaterOrEqual, "low");
  rewriter.addRow(rewriter.graph().sum(-range.high, {{{node, 1}}}), RowType::lessOrEqual, "high");
}

void keepWithinWhen(Rewriter& rewriter, Literal when, NodeId node, Range range) {
  rewriter.addIndicator(when, rewriter.graph().sum(-range.low, {{{node, 1}}}), RowType::greaterOrEqual, "low");
  rewriter.addIndicator(when, rewriter.graph().sum(-range.high, {{{node, 1}}}), RowType::lessOrEqual, "high");
}

void keepSignedRemainder(Lowering& in, NodeId x, NodeId remainder, double most) {
  Graph& graph = in.graph();
  Rewriter& rewriter = in.rewriter();
  const Interval bounds = graph.interval(x);
  if (bounds.lower >= 0) return keepWithin(rewriter, remainder, {0, most});
  if (bounds.upper <= 0) return keepWithin(rewriter, remainder, {-most, 0});
  const NodeId isPositive = graph.call(Op::lessEqual, graph.negate(x));
  const Literal positive = rewriter.asLiteral(rewriter.addBinary(isPositive, "sign"));
  const Literal negative{positive.column, !positive.positive};
  rewriter.addIndicator(positive, x, RowType::greaterOrEqual, "sign");
  rewriter.addIndicator(negative, x, RowType::lessOrEqual, "sign");
  keepWithinWhen(rewriter, positive, remainder, {0, most});
  keepWithinWhen(rewriter, negative, remainder, {-most, 0});
}

}  // namespace brel::rewrite
