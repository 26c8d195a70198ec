#include "brel/rewrite/expression_rules.h"

namespace brel::rewrite {
namespace {

// The function that gives the argument x of y = op(x) back from y.
NodeId inverse(Graph& graph, Op op, NodeId y) {
  switch (op) {
    case Op::asin:
      return graph.call(Op::sin, y);
    case Op::acos:
      return graph.call(Op::cos, y);
    case Op::atan:
      return graph.call(Op::tan, y);
    case Op::atanh:
      return graph.call(Op::tanh, y);
    default: {  // sinh or cosh of y
      const double sign = op == Op::asinh ? -0.5 : 0.5;
      return graph.sum(0, {{{graph.call(Op::exp, y), 0.5}, {graph.call(Op::exp, graph.negate(y)), sign}}});
    }
  }
}

// The angle is not negative where y is not, so that it is pi and not -pi where y is 0 and x negative.
void keepUpperHalf(Rewriter& rewriter, NodeId y, NodeId angle) {
  Graph& graph = rewriter.graph();
  if (graph.interval(y).lower >= 0) return rewriter.addRow(angle, RowType::greaterOrEqual, "above");
  if (graph.interval(y).upper < 0) return rewriter.addRow(angle, RowType::lessOrEqual, "below");
  const NodeId below = rewriter.asAffine(y);
  const int isBelow = graph.column(rewriter.addBinary(graph.call(Op::less, below), "below"));
  rewriter.addIndicator({isBelow, true}, graph.sum(rewriter.stepOf(below), {{{below, 1}}}), RowType::lessOrEqual,
                        "below");
  rewriter.addIndicator({isBelow, true}, angle, RowType::lessOrEqual, "below");
  rewriter.addIndicator({isBelow, false}, below, RowType::greaterOrEqual, "above");
  rewriter.addIndicator({isBelow, false}, angle, RowType::greaterOrEqual, "above");
}

// The angle t of the point (x, y): y = r sin t, x = r cos t with r >= 0. At the origin any angle will do.
NodeId lowerAngle(Lowering& in, NodeId node) {
  Graph& graph = in.graph();
  Rewriter& rewriter = in.rewriter();
  const std::vector<NodeId> children = in.loweredChildren(node);
  const NodeId y = children[0], x = children[1];
  const NodeId angle = rewriter.addColumn(graph.interval(node), false, node, "angle");
  if (graph.interval(x).lower > 0) {
    const NodeId height = graph.product(x, graph.call(Op::tan, angle));
    rewriter.addRow(graph.subtract(height, y), RowType::equal, "def");
    return angle;
  }
  const NodeId squares = graph.sum(0, {{{graph.product(x, x), 1}, {graph.product(y, y), 1}}});
  const NodeId length = graph.call(Op::sqrt, squares);
  const NodeId radius = rewriter.addColumn({0, graph.interval(length).upper}, false, length, "radius");
  const NodeId sine = graph.product(radius, graph.call(Op::sin, angle));
  const NodeId cosine = graph.product(radius, graph.call(Op::cos, angle));
  rewriter.addRow(graph.subtract(sine, y), RowType::equal, "def");
  rewriter.addRow(graph.subtract(cosine, x), RowType::equal, "def");
  keepUpperHalf(rewriter, y, angle);
  return angle;
}

}  // namespace

// The bounds of the node are within the function's range, which makes the relation one to one.
NodeId lowerInverse(Lowering& in, NodeId node) {
  Graph& graph = in.graph();
  const Op op = graph.op(node);
  if (op == Op::atan2) return lowerAngle(in, node);
  const NodeId argument = in.argument(node, 0);
  const NodeId result = in.rewriter().addColumn(graph.interval(node), false, node, "inv");
  in.rewriter().addRow(graph.subtract(inverse(graph, op, result), argument), RowType::equal, "def");
  return result;
}

}  // namespace brel::rewrite
