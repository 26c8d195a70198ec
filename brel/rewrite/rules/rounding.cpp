#include "brel/rewrite/expression_rules.h"
#include "brel/rewrite/rules/whole.h"

namespace brel::rewrite {

// The whole column n of x: floor has x - n within [0, 1), ceil within (-1, 0], trunc the one or the other by the sign
// of x, and round within [-1/2, 1/2] with a half away from zero. What must stay below 1 stays below by the strict step.
NodeId lowerRounding(Lowering& in, NodeId node) {
  Graph& graph = in.graph();
  Rewriter& rewriter = in.rewriter();
  const Op op = graph.op(node);
  const NodeId x = rewriter.asAffine(in.lowered(graph.children(node)[0]));
  const double most = 1 - rewriter.strictStep();
  const auto range = [&graph](double low, double high) { return Range{graph.constant(low), graph.constant(high)}; };
  const NodeId whole = rewriter.addColumn(graph.interval(node), true, node, "whole");
  const NodeId rest = graph.subtract(x, whole);
  if (op == Op::floor) {
    keepWithin(rewriter, rest, range(0, most));
  } else if (op == Op::ceil) {
    keepWithin(rewriter, rest, range(-most, 0));
  } else if (op == Op::trunc) {
    keepBySign(rewriter, x, rest, range(0, most), range(-most, 0));
  } else {
    keepBySign(rewriter, x, rest, range(-0.5, most - 0.5), range(0.5 - most, 0.5));
  }
  return whole;
}

}  // namespace brel::rewrite
