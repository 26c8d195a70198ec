#include "brel/rewrite/expression_rules.h"
#include "brel/rewrite/rules/unequal.h"

namespace brel::rewrite {
namespace {

// e (type) 0, as a row of what must be true or false of a comparison.
struct Condition {
  NodeId e;
  RowType type;
};

Condition whenTrue(Rewriter& rewriter, Op op, NodeId e) {
  if (op == Op::equal) return {e, RowType::equal};
  const double step = op == Op::less ? rewriter.stepOf(e) : 0;
  return {rewriter.graph().sum(step, {{{e, 1}}}), RowType::lessOrEqual};
}

// Not of equalities.
Condition whenFalse(Rewriter& rewriter, Op op, NodeId e) {
  const double step = op == Op::lessEqual ? rewriter.stepOf(e) : 0;
  return {rewriter.graph().sum(-step, {{{e, 1}}}), RowType::greaterOrEqual};
}

}  // namespace

NodeId lowerComparison(Lowering& in, NodeId node) {
  Graph& graph = in.graph();
  Rewriter& rewriter = in.rewriter();
  const Op op = graph.op(node);
  const NodeId e = rewriter.asAffine(in.lowered(graph.children(node)[0]));
  const NodeId result = in.result(node, "cmp");
  const int column = graph.column(result);
  if (in.needsOne(node)) {
    const Condition holds = whenTrue(rewriter, op, e);
    rewriter.addIndicator({column, true}, holds.e, holds.type, "then");
  }
  if (!in.needsZero(node)) return result;
  if (op == Op::equal) {
    keepUnequalUnless(rewriter, result, e);
  } else {
    const Condition fails = whenFalse(rewriter, op, e);
    rewriter.addIndicator({column, false}, fails.e, fails.type, "else");
  }
  return result;
}

void enforceComparison(Lowering& in, NodeId node, bool holds) {
  const Op op = in.graph().op(node);
  const NodeId e = in.lowered(in.graph().children(node)[0]);
  if (op == Op::equal && !holds) return keepUnequal(in.rewriter(), e);
  const Condition condition = holds ? whenTrue(in.rewriter(), op, e) : whenFalse(in.rewriter(), op, e);
  in.rewriter().addRow(condition.e, condition.type, "holds");
}

void enforceComparisonWhen(Lowering& in, NodeId node, Literal when) {
  const NodeId e = in.lowered(in.graph().children(node)[0]);
  const Condition condition = whenTrue(in.rewriter(), in.graph().op(node), e);
  in.rewriter().addIndicator(when, condition.e, condition.type, "if");
}

}  // namespace brel::rewrite
