#include "brel/rewrite/rules/unequal.h"

namespace brel::rewrite {
namespace {

NodeId below(Rewriter& rewriter, NodeId e) { return rewriter.graph().sum(rewriter.stepOf(e), {{{e, 1}}}); }
NodeId above(Rewriter& rewriter, NodeId e) { return rewriter.graph().sum(-rewriter.stepOf(e), {{{e, 1}}}); }

}  // namespace

void keepUnequal(Rewriter& rewriter, NodeId e) {
  Graph& graph = rewriter.graph();
  const Interval bounds = graph.interval(e);
  if (bounds.lower >= 0) return rewriter.addRow(above(rewriter, e), RowType::greaterOrEqual, "differs");
  if (bounds.upper <= 0) return rewriter.addRow(below(rewriter, e), RowType::lessOrEqual, "differs");
  const NodeId affine = rewriter.asAffine(e);
  const NodeId isBelow = rewriter.addBinary(graph.call(Op::less, affine), "below");
  const int column = graph.column(isBelow);
  rewriter.addIndicator({column, true}, below(rewriter, affine), RowType::lessOrEqual, "below");
  rewriter.addIndicator({column, false}, above(rewriter, affine), RowType::greaterOrEqual, "above");
}

void keepUnequalUnless(Rewriter& rewriter, NodeId isEqual, NodeId e) {
  Graph& graph = rewriter.graph();
  const Interval bounds = graph.interval(e);
  const Literal differs{graph.column(isEqual), false};
  if (bounds.lower >= 0) return rewriter.addIndicator(differs, above(rewriter, e), RowType::greaterOrEqual, "differs");
  if (bounds.upper <= 0) return rewriter.addIndicator(differs, below(rewriter, e), RowType::lessOrEqual, "differs");
  const NodeId isBelow = rewriter.addBinary(graph.call(Op::less, e), "below");
  const NodeId isAbove = rewriter.addBinary(graph.call(Op::less, graph.negate(e)), "above");
  rewriter.addIndicator({graph.column(isBelow), true}, below(rewriter, e), RowType::lessOrEqual, "below");
  rewriter.addIndicator({graph.column(isAbove), true}, above(rewriter, e), RowType::greaterOrEqual, "above");
  rewriter.addRow(graph.sum(-1, {{{isEqual, 1}, {isBelow, 1}, {isAbove, 1}}}), RowType::equal, "one");
}

}  // namespace brel::rewrite
