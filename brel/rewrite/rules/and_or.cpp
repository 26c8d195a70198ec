#include <algorithm>

#include "brel/rewrite/expression_rules.h"

namespace brel::rewrite {
namespace {

// One direction is rows: an "or" that is 1 has an operand that is 1, an "and" that is 1 has all at 1; and the other way
// round for 0.
void addOneWay(Lowering& in, NodeId node, NodeId result, bool whenOne) {
  Graph& graph = in.graph();
  Rewriter& rewriter = in.rewriter();
  const bool isOr = graph.op(node) == Op::logicalOr;
  const std::vector<NodeId> operands = in.loweredChildren(node);
  if (isOr == whenOne) {
    std::vector<expr::Term> terms{{result, -1}};
    for (const NodeId operand : operands) terms.push_back({operand, 1});
    const double constant = isOr ? 0 : 1 - static_cast<double>(operands.size());
    return rewriter.addRow(graph.sum(constant, terms), isOr ? RowType::greaterOrEqual : RowType::lessOrEqual, "one");
  }
  for (const NodeId operand : operands) {
    rewriter.addRow(graph.subtract(operand, result), isOr ? RowType::lessOrEqual : RowType::greaterOrEqual, "each");
  }
}

}  // namespace

NodeId lowerAndOr(Lowering& in, NodeId node) {
  Graph& graph = in.graph();
  Rewriter& rewriter = in.rewriter();
  const Op op = graph.op(node);
  const NodeId result = in.result(node, op == Op::logicalOr ? "or" : "and");
  if (!in.needsOne(node) || !in.needsZero(node)) {
    addOneWay(in, node, result, in.needsOne(node));
    return result;
  }
  std::vector<NodeId> operands;
  for (const NodeId child : in.loweredChildren(node)) {
    const Literal literal = rewriter.asLiteral(child);
    operands.push_back(literal.positive ? rewriter.literalNode(literal) : rewriter.asColumn(child));
  }
  rewriter.addFunction(op, result, operands);
  return result;
}

}  // namespace brel::rewrite
