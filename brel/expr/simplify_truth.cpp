#include <algorithm>

#include "brel/expr/simplify.h"

namespace brel::expr {

namespace {

bool isTrue(const Graph& graph, NodeId node) { return graph.isConstant(node) && graph.value(node) != 0; }
bool isFalse(const Graph& graph, NodeId node) { return graph.isConstant(node) && graph.value(node) == 0; }

// The truth value whose complement this node is, if it is one: not(t), or 1 - t.
NodeId complemented(const Graph& graph, NodeId node) {
  if (graph.op(node) == Op::logicalNot) return graph.children(node)[0];
  const bool is = graph.op(node) == Op::sum && graph.value(node) == 1 && graph.children(node).size() == 1 &&
                  graph.coefficients(node)[0] == -1 && graph.isTruth(graph.children(node)[0]);
  return is ? graph.children(node)[0] : kAsItStands;
}

NodeId simplifyNot(Graph& graph, NodeId a) {
  if (const NodeId inner = complemented(graph, a); inner != kAsItStands) return inner;
  const Op op = graph.op(a);
  if (op == Op::lessEqual) return graph.call(Op::less, graph.negate(graph.children(a)[0]));
  if (op == Op::less) return graph.call(Op::lessEqual, graph.negate(graph.children(a)[0]));
  return kAsItStands;
}

// and, or; `deciding` settles the result alone, its opposite never matters.
NodeId simplifyJunction(Graph& graph, Op op, std::vector<NodeId>& children) {
  const bool deciding = op == Op::logicalOr;
  joinChildren(graph, op, children);
  sortUnique(children);
  const auto decides = [&](NodeId child) { return deciding ? isTrue(graph, child) : isFalse(graph, child); };
  const auto isComplement = [&](NodeId child) {
    const NodeId other = complemented(graph, child);
    return other != kAsItStands && std::binary_search(children.begin(), children.end(), other);
  };
  for (const NodeId child : children) {
    if (decides(child) || isComplement(child)) return graph.truth(deciding);
  }
  std::erase_if(children, [&](NodeId child) { return graph.isConstant(child); });
  if (children.empty()) return graph.truth(!deciding);
  return children.size() == 1 ? children[0] : kAsItStands;
}

NodeId simplifyIfAndOnlyIf(Graph& graph, std::vector<NodeId>& children) {
  const NodeId a = children[0], b = children[1];
  if (a == b) return graph.truth(true);
  if (graph.isConstant(a)) return isTrue(graph, a) ? b : graph.logicalNot(b);
  if (graph.isConstant(b)) return isTrue(graph, b) ? a : graph.logicalNot(a);
  for (const NodeId child : children) {
    const NodeId inner = complemented(graph, child);
    if (inner == kAsItStands) continue;
    const NodeId other = child == a ? b : a;
    return graph.logicalNot(graph.call(Op::ifAndOnlyIf, inner, other));
  }
  sort(children);
  return kAsItStands;
}

NodeId simplifyAllDifferent(Graph& graph, std::vector<NodeId>& children) {
  sort(children);
  if (std::adjacent_find(children.begin(), children.end()) != children.end()) return graph.truth(false);
  if (children.size() == 1) return graph.truth(true);
  if (children.size() > 2) return kAsItStands;
  return graph.logicalNot(graph.call(Op::equal, graph.subtract(children[0], children[1])));
}

}  // namespace

NodeId simplifyTruth(Graph& graph, Op op, std::vector<NodeId>& children) {
  switch (op) {
    case Op::lessEqual:
    case Op::less:
    case Op::equal:
      return simplifyComparison(graph, op, children[0]);
    case Op::logicalNot:
      return simplifyNot(graph, children[0]);
    case Op::logicalAnd:
    case Op::logicalOr:
      return simplifyJunction(graph, op, children);
    case Op::ifAndOnlyIf:
      return simplifyIfAndOnlyIf(graph, children);
    default:
      return simplifyAllDifferent(graph, children);
  }
}

NodeId simplifyIfThenElse(Graph& graph, const std::vector<NodeId>& children) {
  const NodeId condition = children[0], a = children[1], b = children[2];
  if (graph.isConstant(condition)) return isTrue(graph, condition) ? a : b;
  if (a == b) return a;
  if (const NodeId inner = complemented(graph, condition); inner != kAsItStands) {
    const NodeId swapped[]{inner, b, a};
    return graph.call(Op::ifThenElse, swapped);
  }
  if (graph.isConstant(a) && graph.isConstant(b)) {
    return graph.sum(graph.value(b), {{{condition, graph.value(a) - graph.value(b)}}});
  }
  if (!graph.isTruth(a) || !graph.isTruth(b)) return kAsItStands;
  if (isTrue(graph, a)) return graph.call(Op::logicalOr, condition, b);
  if (isFalse(graph, b)) return graph.call(Op::logicalAnd, condition, a);
  if (isFalse(graph, a)) return graph.call(Op::logicalAnd, graph.logicalNot(condition), b);
  if (isTrue(graph, b)) return graph.call(Op::logicalOr, graph.logicalNot(condition), a);
  return kAsItStands;
}

}  // namespace brel::expr
