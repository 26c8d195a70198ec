#include <cmath>
#include <numeric>

#include "brel/expr/operation.h"
#include "brel/expr/simplify.h"

namespace brel::expr {

namespace {

constexpr double kExact = 9007199254740992;  // whole numbers up to this are exact

// floor(a / b) for whole b > 0, without a rounded quotient.
double floorDivide(double a, double b) {
  const double rest = std::fmod(a, b);
  return (a - rest) / b - (rest < 0 ? 1 : 0);
}

bool holds(Op op, double value) { return apply(op, 0, {&value, 1}, {}) != 0; }

// A node as constant + sum of terms.
struct View {
  double constant;
  std::span<const NodeId> nodes;
  std::span<const double> coefficients;
};

View viewOf(const Graph& graph, const NodeId& node) {
  static constexpr double kOne = 1;
  if (graph.op(node) == Op::sum) return {graph.value(node), graph.children(node), graph.coefficients(node)};
  return {0, {&node, 1}, {&kOne, 1}};
}

// The greatest common divisor of the coefficients of whole terms; 0 when not all are whole, or some are too large.
double commonDivisor(const Graph& graph, const View& view) {
  if (!(std::fabs(view.constant) < kExact)) return 0;
  long long divisor = 0;
  for (std::size_t k = 0; k < view.nodes.size(); ++k) {
    const double c = view.coefficients[k];
    if (!graph.isInteger(view.nodes[k]) || c != std::round(c) || !(std::fabs(c) < kExact)) return 0;
    divisor = std::gcd(divisor, static_cast<long long>(c));
  }
  return static_cast<double>(divisor);
}

// With whole terms s and constant k: g*s + k <= 0 is s <= floor(-k/g), and g*s + k < 0 is s <= ceil(-k/g) - 1.
// kAsItStands when the equation can never hold.
NodeId tightened(Graph& graph, Op& op, NodeId node) {
  const View view = viewOf(graph, node);
  const double divisor = commonDivisor(graph, view);
  if (divisor == 0) return node;
  double constant = 0;
  if (op == Op::equal) {
    if (std::fmod(view.constant, divisor) != 0) return kAsItStands;
    constant = view.constant / divisor;
  } else if (op == Op::less) {
    constant = floorDivide(view.constant, divisor) + 1;
    op = Op::lessEqual;
  } else {
    constant = -floorDivide(-view.constant, divisor);
  }
  if (divisor == 1 && constant == view.constant) return node;
  std::vector<Term> terms(view.nodes.size());
  for (std::size_t k = 0; k < terms.size(); ++k) terms[k] = {view.nodes[k], view.coefficients[k] / divisor};
  return graph.sum(constant, terms);
}

// What bounds alone tell, or an easier comparison.
NodeId decided(Graph& graph, Op op, NodeId node) {
  const auto [lower, upper] = graph.interval(node);
  if (op == Op::equal) {
    if (lower > 0 || upper < 0) return graph.truth(false);
    if (lower == 0) return graph.call(Op::lessEqual, node);
    return upper == 0 ? graph.call(Op::lessEqual, graph.negate(node)) : kAsItStands;
  }
  const bool isLess = op == Op::less;
  if (isLess ? upper < 0 : upper <= 0) return graph.truth(true);
  return (isLess ? lower >= 0 : lower > 0) ? graph.truth(false) : kAsItStands;
}

// Of one truth value alone: that, its complement or a constant.
NodeId ofTruth(Graph& graph, Op op, const NodeId& node) {
  const View view = viewOf(graph, node);
  if (view.nodes.size() != 1 || !graph.isTruth(view.nodes[0])) return kAsItStands;
  const NodeId truth = view.nodes[0];
  const bool at0 = holds(op, view.constant), at1 = holds(op, view.constant + view.coefficients[0]);
  if (at0 == at1) return graph.truth(at0);
  return at1 ? truth : graph.logicalNot(truth);
}

}  // namespace

NodeId simplifyComparison(Graph& graph, Op op, NodeId& child) {
  Op tight = op;
  const NodeId inner = tightened(graph, tight, child);
  if (inner == kAsItStands) return graph.truth(false);
  if (tight != op) return graph.call(tight, inner);
  child = inner;
  if (graph.isConstant(child)) return graph.truth(holds(op, graph.value(child)));
  if (const NodeId known = ofTruth(graph, op, child); known != kAsItStands) return known;
  if (const NodeId known = decided(graph, op, child); known != kAsItStands) return known;
  if (op == Op::equal && isNegated(graph, child)) child = graph.negate(child);
  return kAsItStands;
}

}  // namespace brel::expr
