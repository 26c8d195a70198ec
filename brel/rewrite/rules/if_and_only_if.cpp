#include "brel/rewrite/expression_rules.h"

namespace brel::rewrite {

// z is 1 when a and b are the same: z = 1 - |a - b|, as four rows.
NodeId lowerIfAndOnlyIf(Lowering& in, NodeId node) {
  Graph& graph = in.graph();
  Rewriter& rewriter = in.rewriter();
  const std::vector<NodeId> children = in.loweredChildren(node);
  const NodeId a = children[0], b = children[1];
  const NodeId z = rewriter.addBinary(node, "same");
  rewriter.addRow(graph.sum(-1, {{{z, 1}, {a, 1}, {b, -1}}}), RowType::lessOrEqual, "same");
  rewriter.addRow(graph.sum(-1, {{{z, 1}, {a, -1}, {b, 1}}}), RowType::lessOrEqual, "same");
  rewriter.addRow(graph.sum(1, {{{z, 1}, {a, -1}, {b, -1}}}), RowType::greaterOrEqual, "same");
  rewriter.addRow(graph.sum(-1, {{{z, 1}, {a, 1}, {b, 1}}}), RowType::greaterOrEqual, "same");
  return z;
}

}  // namespace brel::rewrite
