#include <algorithm>
#include <cmath>

#include "brel/expr/simplify.h"

namespace brel::expr {

namespace {

// Keeps those operands of a minimum that can be the least one. For a maximum all signs are changed.
void dropDominated(const Graph& graph, Op op, std::vector<NodeId>& children) {
  const double sign = op == Op::min ? 1 : -1;
  const auto best = [&](NodeId node) {
    return sign * (sign > 0 ? graph.interval(node).lower : graph.interval(node).upper);
  };
  const auto worst = [&](NodeId node) {
    return sign * (sign > 0 ? graph.interval(node).upper : graph.interval(node).lower);
  };
  const NodeId safest =
      *std::min_element(children.begin(), children.end(), [&](NodeId a, NodeId b) { return worst(a) < worst(b); });
  const double most = worst(safest);
  std::erase_if(children, [&](NodeId node) { return node != safest && best(node) >= most; });
}

NodeId simplifyNorm(Graph& graph, Op op, std::vector<NodeId>& children) {
  for (NodeId& child : children) {
    if (graph.op(child) == Op::abs) child = graph.children(child)[0];
  }
  std::erase_if(children, [&](NodeId child) { return graph.isConstant(child) && graph.value(child) == 0; });
  op == Op::normInf ? sortUnique(children) : sort(children);
  if (children.empty()) return graph.constant(0);
  return children.size() == 1 ? graph.call(Op::abs, children[0]) : kAsItStands;
}

}  // namespace

void joinChildren(const Graph& graph, Op op, std::vector<NodeId>& children) {
  const auto joins = [&](NodeId child) { return graph.op(child) == op && graph.children(child).size() <= kJoined; };
  if (std::none_of(children.begin(), children.end(), joins)) return;
  std::vector<NodeId> joined;
  for (const NodeId child : children) {
    if (joins(child)) {
      joined.insert(joined.end(), graph.children(child).begin(), graph.children(child).end());
    } else {
      joined.push_back(child);
    }
  }
  children = std::move(joined);
}

void sort(std::vector<NodeId>& children) {
  if (!std::is_sorted(children.begin(), children.end())) std::sort(children.begin(), children.end());
}

void sortUnique(std::vector<NodeId>& children) {
  sort(children);
  children.erase(std::unique(children.begin(), children.end()), children.end());
}

NodeId simplifyList(Graph& graph, Op op, std::vector<NodeId>& children) {
  if (op != Op::min && op != Op::max) return simplifyNorm(graph, op, children);
  joinChildren(graph, op, children);
  sortUnique(children);
  dropDominated(graph, op, children);
  return children.size() == 1 ? children[0] : kAsItStands;
}

}  // namespace brel::expr
