#include "brel/rewrite/lowering.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "brel/rewrite/expression_rules.h"

namespace brel::rewrite {
namespace {

// From this size on an expression that is used several times becomes a column of its own.
constexpr float kSharedSize = 25;

bool isComparison(Op op) { return op == Op::lessEqual || op == Op::less || op == Op::equal; }

// Whose result may be a column of the user's, whatever its bounds.
bool mayHaveResult(Op op) {
  switch (op) {
    case Op::abs:
    case Op::min:
    case Op::max:
    case Op::norm1:
    case Op::norm2:
    case Op::normInf:
    case Op::piecewise:
    case Op::ifThenElse:
    case Op::lessEqual:
    case Op::less:
    case Op::equal:
    case Op::logicalAnd:
    case Op::logicalOr:
      return true;
    default:
      return false;
  }
}

bool isWhole(double value) { return value == std::round(value); }

// The values of child k for which a function is defined; whether 0 is not among them although it lies within.
struct Domain {
  Interval values;
  bool withoutZero = false;
};

Domain domainOf(Op op, double value, std::size_t k) {
  constexpr double kInfinite = std::numeric_limits<double>::infinity();
  switch (op) {
    case Op::log:
    case Op::log2:
    case Op::log10:
    case Op::logBase:
    case Op::generalPower:
      return k == 0 ? Domain{{0, kInfinite}, true} : Domain{};
    case Op::sqrt:
      return {{0, kInfinite}};
    case Op::power:
      return {{isWhole(value) ? -kInfinite : 0, kInfinite}, value < 0};
    case Op::divide:
    case Op::mod:
    case Op::integerDivide:
      return {{}, k == 1};
    case Op::asin:
    case Op::acos:
    case Op::atanh:
      return {{-1, 1}};
    case Op::acosh:
      return {{1, kInfinite}};
    default:
      return {};
  }
}

}  // namespace

Lowering::Lowering(Rewriter& rewriter)
    : rewriter_(rewriter),
      sources_(rewriter.graph().size()),
      need_(sources_, 0),
      element_(sources_, -1),
      enforcer_(sources_, {-1, -1}),
      firstGuard_(sources_, -1),
      result_(sources_, kNoNode),
      joiner_(sources_, -1),
      lowered_(sources_, kNoNode),
      conditions_(rewriter),
      matters_(sources_, Conditions::kNever),
      uses_(sources_, 0),
      treeSize_(sources_, 1) {}

void Lowering::need(NodeId node, std::uint8_t what) {
  need_[index(node)] |= what;
  matters_[index(node)] = Conditions::kAlways;
  if (element_[index(node)] < 0) element_[index(node)] = lastElement();
  if ((what & kTrue) != 0 && enforcer(node, true) < 0) enforcer(node, true) = lastElement();
}

bool Lowering::setResult(NodeId node, NodeId column, int element) {
  const bool isFree = mayHaveResult(graph().op(node)) && result_[index(node)] == kNoNode;
  const bool fits = !graph().isTruth(node) || graph().isTruth(column);
  if (!isFree || !fits) return false;
  for (const NodeId child : graph().children(node)) {
    if (child == column) return false;
  }
  result_[index(node)] = column;
  joiner_[index(node)] = element;
  rewriter_.noteJoined(node, element);
  return true;
}

NodeId Lowering::result(NodeId node, std::string_view what) {
  const NodeId given = result_[index(node)];
  return given != kNoNode ? given : rewriter_.addColumn(graph().interval(node), graph().isInteger(node), node, what);
}

NodeId Lowering::argument(NodeId node, std::size_t k) {
  const NodeId child = lowered(graph().children(node)[k]);
  const Conditions::Id where = matters_[index(node)];
  if (where == Conditions::kAlways) return child;
  const Domain domain = domainOf(graph().op(node), graph().value(node), k);
  const Interval bounds = graph().interval(child);
  const bool isInside = domain.values.lower <= bounds.lower && bounds.upper <= domain.values.upper;
  const bool hasZero = domain.withoutZero && bounds.lower <= 0 && bounds.upper >= 0;
  if (isInside && !hasZero) return child;
  Interval allowed{std::max(bounds.lower, domain.values.lower), std::min(bounds.upper, domain.values.upper)};
  if (allowed.lower > allowed.upper) allowed = domain.values;
  if (hasZero) allowed.upper = std::max(allowed.upper, 1.0);
  const NodeId safe = rewriter_.addColumn(allowed, graph().isInteger(child), child, "safe");
  rewriter_.addIndicator(conditions_.literal(where), graph().subtract(safe, child), RowType::equal, "safe");
  return safe;
}

NodeId Lowering::finish(NodeId node, NodeId value) {
  const NodeId given = result_[index(node)];
  if (given == kNoNode) return value;
  rewriter_.addRow(graph().subtract(given, value), RowType::equal, "def");
  return given;
}

void Lowering::guard(NodeId node, Literal literal, int element) {
  guards_.push_back({literal, element, firstGuard_[index(node)]});
  firstGuard_[index(node)] = static_cast<int>(guards_.size()) - 1;
}

bool Lowering::isSimple(NodeId node, Literal& literal) {
  literal.positive = graph().op(node) != Op::logicalNot;
  const NodeId column = literal.positive ? node : graph().children(node)[0];
  if (!graph().isVariable(column)) return false;
  literal.column = graph().column(column);
  return true;
}

// "not a, or b" holds b to be true wherever a is: the guarded one of two operands, kNoNode when there is none.
NodeId Lowering::guardedOperand(NodeId node, Literal& when) {
  const auto children = graph().children(node);
  if (children.size() != 2) return kNoNode;
  Literal first{}, second{};
  const bool isFirst = isSimple(children[0], first), isSecond = isSimple(children[1], second);
  if (isFirst == isSecond) return kNoNode;
  when = isFirst ? first : second;
  when.positive = !when.positive;
  return children[isFirst ? 1 : 0];
}

// Tells the children of a node what is needed of them.
void Lowering::passOn(NodeId node) {
  std::uint8_t& needed = need_[index(node)];
  const Op op = graph().op(node);
  if (firstGuard_[index(node)] >= 0 && !isComparison(op)) passGuardsOn(node);
  if (needed == 0 && firstGuard_[index(node)] < 0) return;
  switch (op) {
    case Op::constant:
    case Op::variable:
      return;
    case Op::logicalNot: {
      constexpr std::array<std::uint8_t, 4> kSwapped{0, kZero, kOne, kBoth};
      const std::uint8_t truth = (needed & kTrue ? kFalse : 0) | (needed & kFalse ? kTrue : 0);
      return passTo(graph().children(node)[0], node, kSwapped[needed & kBoth] | truth);
    }
    case Op::logicalAnd:
      for (const NodeId child : graph().children(node)) {
        passTo(child, node, (needed & (kBoth | kTrue)) | (needed & kFalse ? kZero : 0));
      }
      return;
    case Op::logicalOr:
      return passOnOr(node, needed);
    case Op::ifAndOnlyIf:
      if (needed & kTrue) joinEquivalent(node);
      break;
    case Op::allDifferent:
      if (needed & kFalse) needed |= kZero;
      break;
    case Op::lessEqual:
    case Op::less:
    case Op::equal:
      return passToOperand(node);
    case Op::ifThenElse: {
      const NodeId condition = graph().children(node)[0];
      const Conditions::Id outer = matters_[index(node)];
      if ((needed & (kTrue | kFalse)) != 0) needed |= kBoth;
      passTo(condition, node, kBoth);
      passTo(graph().children(node)[1], node, kBoth, conditions_.whenTruth(condition, true, outer));
      return passTo(graph().children(node)[2], node, kBoth, conditions_.whenTruth(condition, false, outer));
    }
    default:  // a number that is 0 or 1 is enforced by its value
      if ((needed & (kTrue | kFalse)) != 0) needed |= kBoth;
      break;
  }
  for (const NodeId child : graph().children(node)) passTo(child, node, kBoth);
}

void Lowering::passTo(NodeId child, NodeId parent, std::uint8_t what, Conditions::Id where) {
  need_[index(child)] |= what;
  matters_[index(child)] = conditions_.either(matters_[index(child)], where);
  int& element = element_[index(child)];
  if (element < 0 || element == objective_) element = element_[index(parent)];
  const bool isTurned = graph().op(parent) == Op::logicalNot;
  for (const bool holds : {false, true}) {
    const bool isEnforced = (what & (holds ? kTrue : kFalse)) != 0;
    if (isEnforced && enforcer(child, holds) < 0) enforcer(child, holds) = enforcer(parent, holds != isTurned);
  }
}

// What a comparison compares matters where its result must be true, or false; where it must tell both, always.
void Lowering::passToOperand(NodeId node) {
  const NodeId operand = graph().children(node)[0];
  const std::uint8_t needed = need_[index(node)];
  const Conditions::Id outer = matters_[index(node)];
  if (needed != 0 && needed != kOne && needed != kZero) return passTo(operand, node, kBoth);
  if (needed != 0) passTo(operand, node, kBoth, conditions_.whenTruth(node, needed == kOne, outer));
  for (int g = firstGuard_[index(node)]; g >= 0; g = guards_[static_cast<std::size_t>(g)].next) {
    const Literal when = guards_[static_cast<std::size_t>(g)].literal;
    passTo(operand, node, kBoth, conditions_.whenLiteral(when, Conditions::kAlways));
  }
}

void Lowering::passOnOr(NodeId node, std::uint8_t needed) {
  Literal when{};
  const NodeId guarded = needed & kTrue ? guardedOperand(node, when) : kNoNode;
  if (guarded != kNoNode) {
    guard(guarded, when, enforcer(node, true));
    passTo(guarded, node, 0);
  }
  const std::uint8_t asClause = needed & kTrue && guarded == kNoNode ? kOne : 0;
  for (const NodeId child : graph().children(node)) {
    passTo(child, node, (needed & (kBoth | kFalse)) | asClause);
  }
}

void Lowering::passGuardsOn(NodeId node) {
  const Op op = graph().op(node);
  if (op != Op::logicalAnd) {
    need_[index(node)] |= kOne;
    return;
  }
  for (int g = firstGuard_[index(node)]; g >= 0; g = guards_[static_cast<std::size_t>(g)].next) {
    const Guard passed = guards_[static_cast<std::size_t>(g)];
    for (const NodeId child : graph().children(node)) {
      guard(child, passed.literal, passed.element);
      passTo(child, node, 0);
    }
  }
}

// "b if and only if x <= 5": b is the result of the comparison.
void Lowering::joinEquivalent(NodeId node) {
  const auto children = graph().children(node);
  for (std::size_t k = 0; k < 2; ++k) {
    if (graph().isVariable(children[k]) && setResult(children[1 - k], children[k], enforcer(node, true))) return;
  }
}

// How often a node would be written out: a linear one vanishes into the sums that use it.
void Lowering::countUses() {
  for (std::size_t i = 0; i < sources_; ++i) {
    const auto node = static_cast<NodeId>(i);
    if ((need_[i] & kBoth) == 0) continue;
    const bool joins = graph().op(node) == Op::sum || isComparison(graph().op(node));
    for (const NodeId child : graph().children(node)) {
      if (!joins || graph().degree(child) > expr::Degree::linear) ++uses_[index(child)];
    }
  }
  for (std::size_t i = 0; i < sources_; ++i) {
    const auto node = static_cast<NodeId>(i);
    float size = 1;
    for (const NodeId child : graph().children(node)) {
      size += isToBeShared(child) ? 1 : treeSize_[index(child)];
    }
    treeSize_[i] = size;
  }
}

bool Lowering::isToBeShared(NodeId node) const {
  return uses_[index(node)] > 1 && treeSize_[index(node)] >= kSharedSize;
}

void Lowering::run() {
  for (auto node = static_cast<NodeId>(sources_) - 1; node >= 0; --node) passOn(node);
  countUses();
  for (std::size_t i = 0; i < sources_; ++i) {
    const auto node = static_cast<NodeId>(i);
    if (element_[i] >= 0) rewriter_.setElement(elements_[static_cast<std::size_t>(element_[i])]);
    makeFor(node);
    const bool isLeaf = graph().isVariable(node) || graph().isConstant(node);
    if (isLeaf || (need_[i] & kBoth) != 0) lowered_[i] = lower(node);
    enforce(node);
  }
  conditions_.close([this](NodeId truth) { return lowered(truth); });
}

NodeId Lowering::lower(NodeId node) {
  switch (graph().op(node)) {
    case Op::constant:
    case Op::variable:
      return node;
    case Op::abs:
    case Op::min:
    case Op::max:
    case Op::norm1:
    case Op::norm2:
    case Op::normInf:
      return lowerFunction(*this, node);
    case Op::sinh:
    case Op::cosh:
      return lowerHyperbolic(*this, node);
    case Op::asin:
    case Op::acos:
    case Op::atan:
    case Op::asinh:
    case Op::acosh:
    case Op::atanh:
    case Op::atan2:
      return lowerInverse(*this, node);
    case Op::generalPower:
      return lowerGeneralPower(*this, node);
    case Op::floor:
    case Op::ceil:
    case Op::round:
    case Op::trunc:
      return lowerRounding(*this, node);
    case Op::mod:
    case Op::integerDivide:
      return lowerDivision(*this, node);
    case Op::piecewise:
      return lowerPiecewise(*this, node);
    case Op::ifThenElse:
      return lowerIfThenElse(*this, node);
    case Op::lessEqual:
    case Op::less:
    case Op::equal:
      return lowerComparison(*this, node);
    case Op::logicalNot:
      return graph().complement(lowered(graph().children(node)[0]));
    case Op::logicalAnd:
    case Op::logicalOr:
      return lowerAndOr(*this, node);
    case Op::ifAndOnlyIf:
      return lowerIfAndOnlyIf(*this, node);
    case Op::allDifferent:
      return lowerAllDifferent(*this, node);
    default: {
      const NodeId copy = copyWithLoweredChildren(node);
      return isToBeShared(node) ? rewriter_.asColumn(copy) : copy;
    }
  }
}

NodeId Lowering::copyWithLoweredChildren(NodeId node) {
  const Op op = graph().op(node);
  std::vector<NodeId> children;
  for (std::size_t k = 0; k < graph().children(node).size(); ++k) children.push_back(argument(node, k));
  if (op == Op::sum) {
    std::vector<expr::Term> terms;
    for (std::size_t k = 0; k < children.size(); ++k) terms.push_back({children[k], graph().coefficients(node)[k]});
    return graph().sum(graph().value(node), terms);
  }
  switch (op) {
    case Op::product:
      return graph().product(children[0], children[1]);
    case Op::divide:
      return graph().call(op, children[0], children[1]);
    case Op::exponential:
      // Gurobi's presolve solves constant ^ expression wrongly, unless the exponent is a variable
      if (!graph().isVariable(children[0])) {
        return graph().call(Op::exp, graph().scale(children[0], std::log(graph().value(node))));
      }
      return graph().call(op, children[0], graph().value(node));
    case Op::power:
    case Op::signedPower:
    case Op::logBase:
      return graph().call(op, children[0], graph().value(node));
    default:
      return graph().call(op, children[0]);
  }
}

// What is made from now on gives the node its value, or is what an element says of it.
void Lowering::makeFor(NodeId node) {
  const int joiner = joiner_[index(node)];
  rewriter_.setMaker(joiner >= 0 ? Maker{joiner, kNoNode} : Maker{element_[index(node)], node});
}

std::vector<NodeId> Lowering::loweredChildren(NodeId node) {
  std::vector<NodeId> result;
  for (const NodeId child : graph().children(node)) result.push_back(lowered(child));
  return result;
}

// Makes a node hold that must be true or false, everywhere or under guards.
void Lowering::enforce(NodeId node) {
  const std::uint8_t needed = need_[index(node)];
  for (const bool holds : {true, false}) {
    if ((needed & (holds ? kTrue : kFalse)) == 0) continue;
    rewriter_.setMaker({enforcer(node, holds), kNoNode});
    enforceAlways(node, holds);
  }
  for (int g = firstGuard_[index(node)]; g >= 0; g = guards_[static_cast<std::size_t>(g)].next) {
    const Literal when = guards_[static_cast<std::size_t>(g)].literal;
    const Op op = graph().op(node);
    rewriter_.setMaker({guards_[static_cast<std::size_t>(g)].element, kNoNode});
    if (isComparison(op)) {
      enforceComparisonWhen(*this, node, when);
    } else if (op != Op::logicalAnd) {
      const NodeId holds = graph().subtract(lowered(node), rewriter_.literalNode(when));
      rewriter_.addRow(holds, RowType::greaterOrEqual, "if");
    }
  }
}

void Lowering::enforceAlways(NodeId node, bool holds) {
  const Op op = graph().op(node);
  if (op == Op::logicalNot) return;
  if (op == Op::logicalAnd || op == Op::logicalOr) {
    if ((op == Op::logicalAnd) == holds) return;  // the operands are enforced
    Literal when{};
    if (holds && guardedOperand(node, when) != kNoNode) return;
    return enforceClause(node, holds);
  }
  if (isComparison(op)) return enforceComparison(*this, node, holds);
  if (op == Op::allDifferent && holds) return enforceAllDifferent(*this, node);
  NodeId difference = kNoNode;  // which must be 0
  if (op == Op::ifAndOnlyIf) {
    const auto children = loweredChildren(node);
    difference =
        holds ? graph().subtract(children[0], children[1]) : graph().sum(-1, {{{children[0], 1}, {children[1], 1}}});
  } else {
    difference = graph().sum(holds ? -1 : 0, {{{lowered(node), 1}}});
  }
  const bool isFulfilled = graph().isConstant(difference) && graph().value(difference) == 0;
  if (!isFulfilled) rewriter_.addRow(difference, RowType::equal, "holds");
}

// One operand is true (of an "or"), or one is false (of an "and").
void Lowering::enforceClause(NodeId node, bool isOneTrue) {
  std::vector<expr::Term> terms;
  for (const NodeId child : graph().children(node)) terms.push_back({lowered(child), isOneTrue ? 1.0 : -1.0});
  const double constant = isOneTrue ? -1 : static_cast<double>(terms.size()) - 1;
  rewriter_.addRow(graph().sum(constant, terms), RowType::greaterOrEqual, "one");
}

}  // namespace brel::rewrite
