#include <algorithm>
#include <cmath>

#include "brel/rewrite/expression_rules.h"
#include "brel/rewrite/rules/whole.h"

namespace brel::rewrite {
namespace {

// |y| as a node, which is at least `least`: a divisor is not 0.
NodeId sizeOf(Rewriter& rewriter, NodeId y, double least) {
  Graph& graph = rewriter.graph();
  const Interval bounds = graph.interval(y);
  if (bounds.lower < 0 && bounds.upper > 0) {
    const double most = std::max(-bounds.lower, bounds.upper);
    const NodeId size = rewriter.addColumn({least, most}, graph.isInteger(y), graph.call(Op::abs, y), "size");
    rewriter.addFunction(Op::abs, size, {{rewriter.asColumn(y)}});
    return size;
  }
  const NodeId size = bounds.lower >= 0 ? y : graph.negate(y);
  if (graph.interval(size).lower < least) {
    rewriter.addRow(graph.sum(-least, {{{size, 1}}}), RowType::greaterOrEqual, "size");
  }
  return size;
}

// A quotient by a whole number is no larger than what is divided.
Interval quotientBounds(const Graph& graph, NodeId x, NodeId y, NodeId definition) {
  Interval bounds = graph.interval(definition);
  if (!graph.isInteger(y)) return bounds;
  const double most = std::max(std::abs(graph.interval(x).lower), std::abs(graph.interval(x).upper));
  return {std::max(bounds.lower, -most), std::min(bounds.upper, most)};
}

}  // namespace

// x = y q + r with a whole q; r has the sign of x and is smaller than y: by 1 when both are whole, else by the strict
// step.
NodeId lowerDivision(Lowering& in, NodeId node) {
  Graph& graph = in.graph();
  Rewriter& rewriter = in.rewriter();
  const NodeId sourceX = graph.children(node)[0], sourceY = graph.children(node)[1];
  const NodeId x = rewriter.asAffine(in.argument(node, 0)), y = rewriter.asAffine(in.argument(node, 1));
  const NodeId definition = graph.call(Op::integerDivide, sourceX, sourceY);
  const double step = graph.isInteger(x) && graph.isInteger(y) ? 1 : rewriter.strictStep();
  const NodeId quotient = rewriter.addColumn(quotientBounds(graph, x, y, definition), true, definition, "quot");
  const NodeId difference = graph.sum(0, {{{x, 1}, {graph.product(y, quotient), -1}}});
  const NodeId rest = graph.degree(difference) > expr::Degree::linear ? rewriter.asColumn(difference) : difference;
  const NodeId most = graph.sum(-step, {{{sizeOf(rewriter, y, step), 1}}});
  const NodeId zero = graph.constant(0);
  keepBySign(rewriter, x, rest, {zero, most}, {graph.negate(most), zero});
  return graph.op(node) == Op::integerDivide ? quotient : rest;
}

}  // namespace brel::rewrite
