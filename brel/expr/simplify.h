#pragma once

#include <vector>

#include "brel/expr/graph.h"

// What a call is when it is something simpler than that call. The functions return kAsItStands when it is not; then the
// children are what the node is to be made of: merged, and in rising order where the order does not count.
namespace brel::expr {

inline constexpr NodeId kAsItStands = -1;

// Operations on numbers, and if-then-else. The children are not all constants.
NodeId simplifyNumber(Graph& graph, Op op, double value, std::vector<NodeId>& children);
// min, max, the norms.
NodeId simplifyList(Graph& graph, Op op, std::vector<NodeId>& children);
// Operations on truth values, and allDifferent. The children are not all constants.
NodeId simplifyTruth(Graph& graph, Op op, std::vector<NodeId>& children);
NodeId simplifyIfThenElse(Graph& graph, const std::vector<NodeId>& children);
// lessEqual, less, equal: with children[0] in a form that all comparisons share that say the same.
NodeId simplifyComparison(Graph& graph, Op op, NodeId& child);

// ---- shared by them ----

// A node as coefficient * node, when it is a sum of one term alone; otherwise once itself.
Term asTerm(const Graph& graph, NodeId node);
// Short sums whose first term is negative; the same sum with all signs changed is not.
bool isNegated(const Graph& graph, NodeId node);
// Replaces short children with the same operation by their children.
void joinChildren(const Graph& graph, Op op, std::vector<NodeId>& children);
void sort(std::vector<NodeId>& children);
void sortUnique(std::vector<NodeId>& children);

}  // namespace brel::expr
