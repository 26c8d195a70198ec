#include <algorithm>
#include <cmath>

#include "brel/expr/simplify.h"

namespace brel::expr {

namespace {

// Even functions do not see the sign of their argument.
NodeId withoutSign(Graph& graph, NodeId node) {
  if (graph.op(node) == Op::abs) return graph.children(node)[0];
  return isNegated(graph, node) ? graph.negate(node) : node;
}

NodeId simplifyProduct(Graph& graph, std::vector<NodeId>& children) {
  for (std::size_t k = 0; k < 2; ++k) {
    if (graph.isConstant(children[k])) return graph.scale(children[1 - k], graph.value(children[k]));
  }
  const Term a = asTerm(graph, children[0]), b = asTerm(graph, children[1]);
  const double factor = a.coefficient * b.coefficient;
  if (factor != 1 && std::isfinite(factor) && factor != 0) return graph.scale(graph.product(a.node, b.node), factor);
  sort(children);
  if (children[0] != children[1]) return kAsItStands;
  const NodeId base = withoutSign(graph, children[0]);
  return base == children[0] ? kAsItStands : graph.product(base, base);
}

NodeId simplifyDivide(Graph& graph, NodeId a, NodeId b) {
  if (graph.isConstant(a) && graph.value(a) == 0) return a;
  if (!graph.isConstant(b) || graph.value(b) == 0) return kAsItStands;
  const double divisor = graph.value(b);
  if (!std::isfinite(1 / divisor)) return kAsItStands;
  if (graph.op(a) != Op::sum || graph.children(a).size() > kJoined) return graph.scale(a, 1 / divisor);
  // Dividing each coefficient rounds once, where multiplying by the reciprocal rounds twice.
  std::vector<Term> terms;
  for (std::size_t k = 0; k < graph.children(a).size(); ++k) {
    terms.push_back({graph.children(a)[k], graph.coefficients(a)[k] / divisor});
  }
  return graph.sum(graph.value(a) / divisor, terms);
}

NodeId simplifyPower(Graph& graph, NodeId a, double exponent) {
  if (exponent == 0) return graph.constant(1);
  if (exponent == 1) return a;
  if (exponent == 2) return graph.product(a, a);
  if (exponent == 0.5) return graph.call(Op::sqrt, a);
  if (exponent == -1) return graph.call(Op::divide, graph.constant(1), a);
  if (std::fmod(exponent, 2) != 0) return kAsItStands;
  const NodeId base = withoutSign(graph, a);
  return base == a ? kAsItStands : graph.call(Op::power, base, exponent);
}

NodeId simplifyGeneralPower(Graph& graph, NodeId a, NodeId b) {
  if (graph.isConstant(b)) return graph.call(Op::power, a, graph.value(b));
  if (graph.isConstant(a) && graph.value(a) > 0) return graph.call(Op::exponential, b, graph.value(a));
  return kAsItStands;
}

// The same as a power where the sign does not change, and for odd exponents everywhere.
NodeId simplifySignedPower(Graph& graph, NodeId a, double exponent) {
  if (exponent == 1) return a;
  if (graph.interval(a).lower >= 0 || std::fabs(std::fmod(exponent, 2)) == 1) {
    return graph.call(Op::power, a, exponent);
  }
  if (graph.interval(a).upper <= 0) return graph.negate(graph.call(Op::power, graph.negate(a), exponent));
  return kAsItStands;
}

NodeId simplifySqrt(Graph& graph, NodeId a) {
  if (graph.op(a) != Op::product || graph.children(a)[0] != graph.children(a)[1]) return kAsItStands;
  return graph.call(Op::abs, graph.children(a)[0]);
}

NodeId simplifyAbs(Graph& graph, NodeId a) {
  if (graph.interval(a).lower >= 0) return a;
  if (graph.interval(a).upper <= 0) return graph.negate(a);
  const Term term = asTerm(graph, a);
  if (term.coefficient != 1) return graph.scale(graph.call(Op::abs, term.node), std::fabs(term.coefficient));
  return isNegated(graph, a) ? graph.call(Op::abs, graph.negate(a)) : kAsItStands;
}

double rounded(Op op, double x) {
  if (op == Op::floor) return std::floor(x);
  if (op == Op::ceil) return std::ceil(x);
  return op == Op::round ? std::round(x) : std::trunc(x);
}

NodeId simplifyRounding(Graph& graph, Op op, NodeId a) {
  if (graph.isInteger(a)) return a;
  const auto [lower, upper] = graph.interval(a);
  const double least = rounded(op, lower);
  if (std::isfinite(least) && least == rounded(op, upper)) return graph.constant(least);
  if (op == Op::trunc && lower >= 0) return graph.call(Op::floor, a);
  if (op == Op::trunc && upper <= 0) return graph.call(Op::ceil, a);
  return kAsItStands;
}

NodeId simplifyIntegerDivide(Graph& graph, Op op, NodeId a, NodeId b) {
  if (!graph.isInteger(a) || !graph.isConstant(b) || std::fabs(graph.value(b)) != 1) return kAsItStands;
  return op == Op::mod ? graph.constant(0) : graph.scale(a, graph.value(b));
}

NodeId simplifyLogBase(Graph& graph, NodeId a, double base) {
  if (base == 2) return graph.call(Op::log2, a);
  return base == 10 ? graph.call(Op::log10, a) : kAsItStands;
}

}  // namespace

Term asTerm(const Graph& graph, NodeId node) {
  if (graph.op(node) != Op::sum || graph.value(node) != 0 || graph.children(node).size() != 1) return {node, 1};
  return {graph.children(node)[0], graph.coefficients(node)[0]};
}

bool isNegated(const Graph& graph, NodeId node) {
  return graph.op(node) == Op::sum && graph.children(node).size() <= kJoined && graph.coefficients(node)[0] < 0;
}

NodeId simplifyNumber(Graph& graph, Op op, double value, std::vector<NodeId>& children) {
  switch (op) {
    case Op::product:
      return simplifyProduct(graph, children);
    case Op::divide:
      return simplifyDivide(graph, children[0], children[1]);
    case Op::power:
      return simplifyPower(graph, children[0], value);
    case Op::exponential:
      return value == 1 ? graph.constant(1) : kAsItStands;
    case Op::generalPower:
      return simplifyGeneralPower(graph, children[0], children[1]);
    case Op::signedPower:
      return simplifySignedPower(graph, children[0], value);
    case Op::sqrt:
      return simplifySqrt(graph, children[0]);
    case Op::logBase:
      return simplifyLogBase(graph, children[0], value);
    case Op::abs:
      return simplifyAbs(graph, children[0]);
    case Op::floor:
    case Op::ceil:
    case Op::round:
    case Op::trunc:
      return simplifyRounding(graph, op, children[0]);
    case Op::mod:
    case Op::integerDivide:
      return simplifyIntegerDivide(graph, op, children[0], children[1]);
    case Op::ifThenElse:
      return simplifyIfThenElse(graph, children);
    case Op::min:
    case Op::max:
    case Op::norm1:
    case Op::norm2:
    case Op::normInf:
      return simplifyList(graph, op, children);
    default:
      return kAsItStands;
  }
}

}  // namespace brel::expr
