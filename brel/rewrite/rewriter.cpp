#include "brel/rewrite/rewriter.h"

#include <fmt/format.h>

#include "brel/expr/emit.h"
#include "tav/math/fn/catalogue.h"
#include "tav/opt/support_exception.h"

namespace brel::rewrite {
namespace {

namespace fn = tav::math::fn;

const fn::Abstract<double>& functionOf(Op op) {
  switch (op) {
    case Op::abs:
      return fn::the<fn::Abs>();
    case Op::min:
      return fn::the<fn::Min>();
    case Op::max:
      return fn::the<fn::Max>();
    case Op::norm1:
      return fn::the<fn::Norm1>();
    case Op::norm2:
      return fn::the<fn::Norm2>();
    case Op::normInf:
      return fn::the<fn::NormInf>();
    case Op::logicalAnd:
      return fn::the<fn::BoolAnd>();
    case Op::logicalOr:
      return fn::the<fn::BoolOr>();
    default:
      throw tav::Exception("This operator is no constraint of the solver.");
  }
}

bool takesVector(Op op) { return op == Op::norm1 || op == Op::norm2 || op == Op::normInf; }

void pushTerms(LinearTerms& terms, const expr::Parts& parts) {
  for (const auto& [column, value] : parts.linear) terms.push(column, value);
  terms.end();
}

void pushTerms(QuadraticTerms& terms, const expr::Parts& parts) {
  for (const auto& [first, second, value] : parts.quadratic) terms.push(first, second, value);
  terms.end();
}

}  // namespace

Rewriter::Rewriter(Graph& graph, Beyond& beyond, ColumnPlace place, bool hasNames, RewriteOptions options)
    : graph_(graph), beyond_(beyond), place_(place), hasNames_(hasNames), options_(options), splitter_(graph) {}

void Rewriter::note(std::string_view what) { beyond_.notes.push_back(fmt::format("{}: {}", element_, what)); }

std::string Rewriter::nameFor(std::string_view what) {
  return hasNames_ ? fmt::format("{}_{}{}", element_, what, ++named_) : std::string();
}

RowOrigin Rewriter::helping(std::string_view what) { return {kNoUserRow, nameFor(what)}; }

NodeId Rewriter::addColumn(Interval bounds, bool isInteger, NodeId definition, std::string_view what) {
  AuxiliaryColumns& columns = beyond_.columns;
  const int position = place_.firstColumn + static_cast<int>(columns.size());
  columns.lower.push_back(bounds.lower);
  columns.upper.push_back(bounds.upper);
  columns.isInteger.push_back(isInteger ? 1 : 0);
  columns.definition.push_back(definition);
  columns.maker.push_back(maker_);
  if (hasNames_) columns.names.push_back(nameFor(what));
  return graph_.variable(position, bounds.lower, bounds.upper, isInteger);
}

NodeId Rewriter::asColumn(NodeId node) {
  if (graph_.isVariable(node)) return node;
  const auto i = static_cast<std::size_t>(node);
  if (i >= columnOf_.size()) columnOf_.resize(graph_.size(), kNoNode);
  if (columnOf_[i] != kNoNode) return columnOf_[i];
  const bool isConstant = graph_.isConstant(node);
  const NodeId column = addColumn(graph_.interval(node), graph_.isInteger(node), node, isConstant ? "const" : "arg");
  columnOf_[i] = column;
  if (!isConstant) addRow(graph_.subtract(column, node), RowType::equal, "def");  // a constant is fixed by its bounds
  return column;
}

NodeId Rewriter::asAffine(NodeId node) {
  if (graph_.degree(node) <= expr::Degree::linear) return node;
  const expr::Parts parts = splitter_.split(node, false);  // a copy: making columns splits other nodes
  std::vector<expr::Term> terms;
  for (const auto& [column, value] : parts.linear) terms.push_back({graph_.variable(column, 0, 0, false), value});
  for (const expr::Term& rest : parts.rest) terms.push_back({asColumn(rest.node), rest.coefficient});
  return graph_.sum(parts.constant, terms);
}

Literal Rewriter::asLiteral(NodeId truth) {
  if (graph_.op(truth) == Op::sum && graph_.value(truth) == 1 && graph_.children(truth).size() == 1) {
    const NodeId child = graph_.children(truth)[0];
    if (graph_.coefficients(truth)[0] == -1 && graph_.isVariable(child)) return {graph_.column(child), false};
  }
  return {graph_.column(asColumn(truth)), true};
}

NodeId Rewriter::literalNode(Literal literal) {
  const NodeId column = graph_.variable(literal.column, 0, 1, true);
  return literal.positive ? column : graph_.complement(column);
}

void Rewriter::pushHead(RowHeads& heads, RowType type, double side, const RowOrigin& origin) const {
  heads.type.push_back(type);
  heads.side.push_back(side);
  heads.user.push_back(origin.user);
  heads.rangeColumn.push_back(origin.rangeColumn);
  heads.maker.push_back(maker_);
  if (hasNames_) heads.names.push_back(origin.name);
}

void Rewriter::addRow(NodeId node, RowType type, const RowOrigin& origin) {
  const expr::Parts& parts = splitter_.split(node, graph_.degree(node) == expr::Degree::quadratic);
  if (!parts.rest.empty()) {
    beyond_.nonlinear.functions.push_back(emitNonlinear(parts));
    beyond_.nonlinear.tryNonlinear.push_back(1);
    pushHead(beyond_.nonlinear.heads, type, 0, origin);
  } else if (!parts.quadratic.empty()) {
    pushTerms(beyond_.quadratic.terms, parts);
    pushTerms(beyond_.quadratic.quadratic, parts);
    pushHead(beyond_.quadratic.heads, type, 0 - parts.constant, origin);
  } else {
    pushTerms(beyond_.linear.terms, parts);
    pushHead(beyond_.linear.heads, type, 0 - parts.constant, origin);
  }
}

// The linear part first, with the constant, then the other summands.
Rewriter::View Rewriter::emitNonlinear(const expr::Parts& parts) {
  auto& target = *beyond_.expressions;
  std::vector<int> positions;
  std::vector<double> values;
  for (const auto& [column, value] : parts.linear) positions.push_back(column), values.push_back(value);
  target.addLinearCall(
      tav::math::LinearFunction<double>::owning(place_.space, std::move(positions), std::move(values), parts.constant));
  for (const auto& [node, coefficient] : parts.rest) {
    if (coefficient != 1 && coefficient != -1) target.addConstant(coefficient);
    expr::emit(graph_, node, place_.space, target);
    if (coefficient == -1) target.addCall(fn::the<fn::Negate>(), 1);
    if (coefficient != 1 && coefficient != -1) target.addCall(fn::the<fn::Multiply>(), 2);
  }
  target.addCall(fn::the<fn::Add>(), static_cast<int>(parts.rest.size()) + 1);
  return target.take();
}

void Rewriter::addIndicator(Literal when, NodeId node, RowType type, const RowOrigin& origin) {
  const expr::Parts& parts = splitter_.split(asAffine(node), false);
  pushTerms(beyond_.indicator.terms, parts);
  pushHead(beyond_.indicator.heads, type, 0 - parts.constant, origin);
  beyond_.indicator.binary.push_back(when.column);
  beyond_.indicator.active.push_back(when.positive ? 1 : 0);
}

void Rewriter::addFunction(Op op, NodeId result, std::span<const NodeId> arguments) {
  auto& target = *beyond_.expressions;
  target.addVariable(place_.space, graph_.column(result));
  int count = static_cast<int>(arguments.size());
  for (const NodeId argument : arguments) target.addVariable(place_.space, graph_.column(argument));
  if (takesVector(op)) {
    target.addCall(fn::the<fn::Vectorize>(), count);
    count = 1;
  }
  target.addCall(functionOf(op), count);
  target.addCall(fn::the<fn::Subtract>(), 2);
  beyond_.nonlinear.functions.push_back(target.take());
  beyond_.nonlinear.tryNonlinear.push_back(0);
  pushHead(beyond_.nonlinear.heads, RowType::equal, 0, helping("func"));
}

void Rewriter::addOrderedSet(std::span<const NodeId> members) {
  double weight = 0;
  for (const NodeId member : members) beyond_.sets.members.push(graph_.column(member), ++weight);
  beyond_.sets.members.end();
  beyond_.sets.type.push_back(2);
  beyond_.sets.maker.push_back(maker_);
}

void Rewriter::setObjective(NodeId node) {
  using Kind = BeyondObjective::Kind;
  BeyondObjective& objective = beyond_.objective;
  const expr::Parts& parts = splitter_.split(node, graph_.degree(node) == expr::Degree::quadratic);
  objective.constant = parts.constant;
  objective.kind = !parts.rest.empty() ? Kind::nonlinear : parts.quadratic.empty() ? Kind::linear : Kind::quadratic;
  if (objective.kind == Kind::nonlinear) objective.function.push_back(emitNonlinear(parts));
  pushTerms(objective.terms, parts);
  pushTerms(objective.quadratic, parts);
}

}  // namespace brel::rewrite
