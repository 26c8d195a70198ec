#include <cmath>

#include "brel/rewrite/expression_rules.h"
#include "brel/rewrite/rules/whole.h"

namespace brel::rewrite {
namespace {

// The quotient of x / divisor, cut toward zero. Of whole numbers the remainder ends 1 below the divisor.
NodeId quotientByConstant(Lowering& in, NodeId x, double divisor, NodeId definition) {
  Graph& graph = in.graph();
  Rewriter& rewriter = in.rewriter();
  const bool isWhole = graph.isInteger(x) && divisor == std::round(divisor);
  const double most = std::abs(divisor) - (isWhole ? 1 : rewriter.strictStep());
  const NodeId quotient = rewriter.addColumn(graph.interval(definition), true, definition, "quot");
  keepSignedRemainder(in, x, graph.sum(0, {{{x, 1}, {quotient, -divisor}}}), most);
  return quotient;
}

NodeId quotient(Lowering& in, NodeId x, NodeId y, NodeId definition) {
  Graph& graph = in.graph();
  Rewriter& rewriter = in.rewriter();
  if (graph.isConstant(y)) return quotientByConstant(in, rewriter.asAffine(x), graph.value(y), definition);
  const NodeId ratio = rewriter.asColumn(graph.call(Op::divide, x, y));
  const NodeId whole = rewriter.addColumn(graph.interval(definition), true, definition, "quot");
  keepSignedRemainder(in, ratio, graph.subtract(ratio, whole), 1 - rewriter.strictStep());
  return whole;
}

}  // namespace

NodeId lowerDivision(Lowering& in, NodeId node) {
  Graph& graph = in.graph();
  const NodeId sourceX = graph.children(node)[0], sourceY = graph.children(node)[1];
  const NodeId x = in.lowered(sourceX), y = in.lowered(sourceY);
  const NodeId whole = quotient(in, x, y, graph.call(Op::integerDivide, sourceX, sourceY));
  if (graph.op(node) == Op::integerDivide) return whole;
  return graph.sum(0, {{{x, 1}, {graph.product(y, whole), -1}}});
}

}  // namespace brel::rewrite
