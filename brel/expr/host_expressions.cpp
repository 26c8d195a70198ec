#include "brel/expr/host_expressions.h"

#include <algorithm>

#include "brel/expr/host_operators.h"

namespace brel::expr {

namespace {

constexpr NodeId kUnknown = -1;
constexpr double kHostInfinity = 1e20;
constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::size_t at(int index) { return static_cast<std::size_t>(index); }

}  // namespace

HostExpressions::HostExpressions(trpRec* host, const kavo_columns& columns, const kavo_expressions& expressions,
                                 Graph& graph, Bounds bounds)
    : host_(host),
      columns_(columns),
      expressions_(expressions),
      graph_(graph),
      bounds_(bounds),
      operands_(graph, refusal_),
      known_(expressions.count, kUnknown),
      columnNodes_(columns.count, kUnknown) {}

NodeId HostExpressions::column(int column) {
  NodeId& node = columnNodes_[at(column)];
  if (node != kUnknown) return node;
  const int type = columns_.type[column];
  double lower = columns_.lower[column], upper = columns_.upper[column];
  lower = bounds_ == Bounds::ignored || lower <= -kHostInfinity ? -kInfinity : lower;
  upper = bounds_ == Bounds::ignored || upper >= kHostInfinity ? kInfinity : upper;
  if (type == KAVO_BINARY) {
    lower = std::max(lower, 0.0);
    upper = std::min(upper, 1.0);
  } else if (type == KAVO_SEMICONTINUOUS || type == KAVO_SEMIINTEGER) {
    lower = std::min(lower, 0.0);
    upper = std::max(upper, 0.0);
  }
  const bool isInteger = type != KAVO_CONTINUOUS && type != KAVO_SEMICONTINUOUS;
  const bool isSwitch = type == KAVO_BINARY || (type == KAVO_INTEGER && lower >= 0 && upper <= 1);
  if (isInteger && !isSwitch && lower > -1 && upper < 2) upper = 2;  // too wide for a truth value
  return node = graph_.variable(column, lower, upper, isInteger);
}

NodeId HostExpressions::number(int expression, const std::string& element) {
  refusal_.setElement(element);
  waiting_.assign(1, expression);
  while (!waiting_.empty()) {
    const int next = waiting_.back();
    if (known_[at(next)] != kUnknown) {
      waiting_.pop_back();
    } else if (!pushMissing(next)) {
      known_[at(next)] = takeIn(next);
    }
  }
  return known_[at(expression)];
}

NodeId HostExpressions::truth(int expression, const std::string& element) {
  return truthOf(graph_, number(expression, element));
}

// The defined variables that an expression uses and that are not taken in; false: there is none.
bool HostExpressions::pushMissing(int expression) {
  if (expressions_.defined_count == 0) return false;
  const std::size_t before = waiting_.size();
  for (std::size_t k = expressions_.start[expression]; k < expressions_.start[expression + 1]; ++k) {
    if (expressions_.op[k] != KAVO_OP_DEFINED_VARIABLE) continue;
    const int used = expressions_.defined[expressions_.index[k]];
    if (known_[at(used)] == kUnknown) waiting_.push_back(used);
  }
  return waiting_.size() > before;
}

NodeId HostExpressions::takeIn(int expression) {
  operands_.clear();
  for (std::size_t k = expressions_.start[expression]; k < expressions_.start[expression + 1]; ++k) takeNode(k);
  return operands_.take();
}

void HostExpressions::takeNode(std::size_t node) {
  const kavo_operator op = expressions_.op[node];
  const int index = expressions_.index[node];
  switch (op) {
    case KAVO_OP_NUMBER:
      return operands_.pushConstant(expressions_.value[node]);
    case KAVO_OP_VARIABLE:
      return operands_.push(column(index));
    case KAVO_OP_DEFINED_VARIABLE:
      return operands_.push(known_[at(expressions_.defined[index])]);
    case KAVO_OP_STRING:  // whoever takes strings is refused, which tells more
      return operands_.pushConstant(0);
    case KAVO_OP_CALL:
      refuseCall(static_cast<int>(expressions_.value[node]));
    default:
      const int arity = kavo_operator_arity(op);
      takeOperator(node, at(arity < 0 ? index : arity));
  }
}

void HostExpressions::takeOperator(std::size_t node, std::size_t operands) {
  const kavo_operator op = expressions_.op[node];
  switch (op) {
    case KAVO_OP_MINUS:
      operands_.scaleLast(-1);
      [[fallthrough]];
    case KAVO_OP_PLUS:
    case KAVO_OP_SUM:
      return operands_.join(Op::sum, operands);
    case KAVO_OP_NEGATE:
      return operands_.scaleLast(-1);
    case KAVO_OP_LOGICAL_AND:
    case KAVO_OP_FOR_ALL:
      return operands_.join(Op::logicalAnd, operands);
    case KAVO_OP_LOGICAL_OR:
    case KAVO_OP_EXISTS:
      return operands_.join(Op::logicalOr, operands);
    case KAVO_OP_MIN:
      return operands_.join(Op::min, operands);
    case KAVO_OP_MAX:
      return operands_.join(Op::max, operands);
    case KAVO_OP_TIMES:
      if (operands_.scaleByConstant()) return;
      [[fallthrough]];
    default:
      operands_.push(makeOperator(graph_, refusal_, op, operands_.take(operands)));
  }
}

void HostExpressions::refuseCall(int function) const {
  const char* name = nullptr;
  if (kavo_link_function_name(host_, at(function), &name) != KAVO_OK) name = "";
  refusal_.raise(fmt::format("the imported function \"{}\" cannot be given to the solver", name));
}

}  // namespace brel::expr
