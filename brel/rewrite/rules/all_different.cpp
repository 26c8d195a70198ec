#include <algorithm>
#include <cmath>
#include <map>

#include "brel/rewrite/expression_rules.h"
#include "brel/rewrite/rules/unequal.h"

namespace brel::rewrite {
namespace {

constexpr double kMostValues = 1000;  // per operand, for one binary column per value

std::vector<NodeId> affineOperands(Lowering& in, NodeId node) {
  std::vector<NodeId> operands = in.loweredChildren(node);
  for (NodeId& operand : operands) operand = in.rewriter().asAffine(operand);
  return operands;
}

// Whether a binary column per operand and value makes fewer columns than one per pair of operands.
bool hasFewValues(const Graph& graph, const std::vector<NodeId>& operands) {
  double values = 0;
  for (const NodeId operand : operands) {
    const Interval bounds = graph.interval(operand);
    const double count = bounds.upper - bounds.lower + 1;
    if (!graph.isInteger(operand) || !(count <= kMostValues)) return false;
    values += count;
  }
  const auto n = static_cast<double>(operands.size());
  return values <= n * (n - 1) / 2 + 2 * n;
}

// z[v] = 1 when the operand is v; of the operands at most one is v.
void assign(Lowering& in, const std::vector<NodeId>& operands) {
  Graph& graph = in.graph();
  Rewriter& rewriter = in.rewriter();
  std::map<double, std::vector<expr::Term>> takersOf;
  for (const NodeId operand : operands) {
    const Interval bounds = graph.interval(operand);
    std::vector<expr::Term> one, value{{operand, -1}};
    const double first = std::ceil(bounds.lower);
    const int count = static_cast<int>(std::floor(bounds.upper) - first) + 1;
    for (int k = 0; k < count; ++k) {
      const double v = first + k;
      const NodeId isValue = rewriter.addBinary(graph.call(Op::equal, graph.sum(-v, {{{operand, 1}}})), "is");
      one.push_back({isValue, 1});
      value.push_back({isValue, v});
      takersOf[v].push_back({isValue, 1});
    }
    rewriter.addRow(graph.sum(-1, one), RowType::equal, "one");
    rewriter.addRow(graph.sum(0, value), RowType::equal, "value");
  }
  for (const auto& [value, takers] : takersOf) {
    if (takers.size() > 1) rewriter.addRow(graph.sum(-1, takers), RowType::lessOrEqual, "once");
  }
}

}  // namespace

void enforceAllDifferent(Lowering& in, NodeId node) {
  Graph& graph = in.graph();
  const std::vector<NodeId> operands = affineOperands(in, node);
  if (hasFewValues(graph, operands)) return assign(in, operands);
  for (std::size_t i = 0; i < operands.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) keepUnequal(in.rewriter(), graph.subtract(operands[i], operands[j]));
  }
}

// The value is 1 when no pair is equal, 0 when one is.
NodeId lowerAllDifferent(Lowering& in, NodeId node) {
  Graph& graph = in.graph();
  Rewriter& rewriter = in.rewriter();
  const std::vector<NodeId> operands = affineOperands(in, node);
  const NodeId result = rewriter.addBinary(node, "alldiff");
  std::vector<expr::Term> someEqual{{result, 1}};
  const auto addPair = [&](NodeId e) {
    const NodeId isEqual = rewriter.addBinary(graph.call(Op::equal, e), "eq");
    rewriter.addIndicator({graph.column(isEqual), true}, e, RowType::equal, "eq");
    someEqual.push_back({isEqual, 1});
    if (!in.needsOne(node)) return;
    keepUnequalUnless(rewriter, isEqual, e);
    rewriter.addRow(graph.sum(-1, {{{result, 1}, {isEqual, 1}}}), RowType::lessOrEqual, "each");
  };
  for (std::size_t i = 0; i < operands.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) addPair(graph.subtract(operands[i], operands[j]));
  }
  rewriter.addRow(graph.sum(-1, someEqual), RowType::greaterOrEqual, "one");
  return result;
}

}  // namespace brel::rewrite
