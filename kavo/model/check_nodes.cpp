#include "kavo/model/check_nodes.h"

#include <fmt/format.h>

#include <cmath>

#include "kavo/error.h"

namespace kavo {

namespace {

// Which operands of an operator must be numbers: `count` of them from `first` on.
struct NumberOperands {
  std::size_t first, count;
};

NumberOperands numberOperands(int op, std::size_t operands) {
  switch (op) {
    case KAVO_OP_POWER_CONSTANT_BASE:
      return {0, 1};
    case KAVO_OP_POWER_CONSTANT_EXPONENT:
    case KAVO_OP_SIGNED_POWER:
    case KAVO_OP_LOG_BASE:
      return {1, 1};
    case KAVO_OP_POLYNOMIAL:
    case KAVO_OP_PIECEWISE_LINEAR:
    case KAVO_OP_PIECEWISE_LINEAR_POINTS:
      return {0, operands - 1};
    default:
      return {0, 0};
  }
}

}  // namespace

void NodeChecker::check(const char* what, std::size_t number, std::size_t begin, std::size_t end, std::size_t defined) {
  what_ = what;
  number_ = number;
  begin_ = begin;
  defined_ = defined;
  waiting_.clear();
  if (begin == end) throw Error(KAVO_INVALID, fmt::format("{} {} is empty", what, number));
  for (std::size_t k = begin; k < end; ++k) {
    const int operands = kavo::arity(nodes_.op[k]);
    operands == 0 ? checkLeaf(k) : takeOperands(k);
    waiting_.push_back(k);
  }
  if (waiting_.size() > 1) {
    fail(end - 1, fmt::format("the expression ends here, but {} operands before are not used", waiting_.size() - 1));
  }
}

void NodeChecker::fail(std::size_t node, const std::string& message, kavo_status status) const {
  throw Error(status, fmt::format("{} {}, node {}: {}", what_, number_, node - begin_, message));
}

void NodeChecker::checkLeaf(std::size_t node) const {
  const int index = nodes_.index[node];
  const auto exists = [index](std::size_t count) { return index >= 0 && static_cast<std::size_t>(index) < count; };
  switch (nodes_.op[node]) {
    case KAVO_OP_NUMBER:
      if (!std::isfinite(nodes_.value[node])) {
        fail(node, fmt::format("the number {} must be finite", nodes_.value[node]));
      }
      return;
    case KAVO_OP_VARIABLE:
      if (!exists(columns_)) fail(node, fmt::format("there is no column {}: the model has {}", index, columns_));
      return;
    case KAVO_OP_DEFINED_VARIABLE:
      if (!exists(defined_)) {
        fail(node,
             fmt::format("there is no defined variable {} that can be used here: {} come before", index, defined_));
      }
      return;
    default:
      fail(node, "strings can only come from a .nl file", KAVO_NOT_SUPPORTED);
  }
}

void NodeChecker::takeOperands(std::size_t node) {
  const int op = nodes_.op[node];
  const int arity = kavo::arity(op);
  if (arity == -2) fail(node, fmt::format("there is no operator {}", op));
  if (op == KAVO_OP_CALL || op == KAVO_OP_NUMBER_OF_SYMBOLIC || op == KAVO_OP_IF_SYMBOLIC) {
    fail(node, fmt::format("{} can only come from a .nl file", operatorName(op)), KAVO_NOT_SUPPORTED);
  }
  const int given = arity < 0 ? nodes_.index[node] : arity;
  if (given < 1) fail(node, fmt::format("{} needs an operand, not {}", operatorName(op), given));
  const auto operands = static_cast<std::size_t>(given);
  if (operands > waiting_.size()) {
    fail(node, fmt::format("{} takes {} operands, but there are {}", operatorName(op), operands, waiting_.size()));
  }
  checkNumbers(node, operands);
  waiting_.resize(waiting_.size() - operands);
}

void NodeChecker::checkNumbers(std::size_t node, std::size_t operands) const {
  const int op = nodes_.op[node];
  const auto [first, count] = numberOperands(op, operands);
  for (std::size_t i = first; i < first + count; ++i) {
    const std::size_t root = waiting_[waiting_.size() - operands + i];
    if (nodes_.op[root] != KAVO_OP_NUMBER) {
      fail(node, fmt::format("operand {} of {} must be a number, not {}", i + 1, operatorName(op),
                             operatorName(nodes_.op[root])));
    }
  }
  if (op == KAVO_OP_POLYNOMIAL && operands < 2) fail(node, "polynomial needs a coefficient");
  if (op == KAVO_OP_PIECEWISE_LINEAR) checkOrder(node, operands);
  if (op == KAVO_OP_PIECEWISE_LINEAR_POINTS) checkPoints(node, operands);
  if (op == KAVO_OP_LOG_BASE && !(number(operands, 1) > 0 && number(operands, 1) != 1)) {
    fail(node, fmt::format("the base {} of a logarithm must be above 0 and other than 1", number(operands, 1)));
  }
}

void NodeChecker::checkOrder(std::size_t node, std::size_t operands) const {
  if (operands < 4 || operands % 2 != 0) {
    fail(node, fmt::format("{} operands are not slope, breakpoint, slope, ..., slope and the argument", operands));
  }
  for (std::size_t i = 3; i + 1 < operands; i += 2) {
    if (number(operands, i) < number(operands, i - 2)) {
      fail(node, fmt::format("the breakpoints decrease from {} to {}", number(operands, i - 2), number(operands, i)));
    }
  }
}

void NodeChecker::checkPoints(std::size_t node, std::size_t operands) const {
  if (operands < 5 || operands % 2 == 0) {
    fail(node, fmt::format("{} operands are not two or more points x, y and the argument", operands));
  }
  const std::size_t last = operands - 3;  // the x of the last point
  for (std::size_t i = 2; i <= last; i += 2) {
    const double before = number(operands, i - 2), here = number(operands, i);
    if (here < before) fail(node, fmt::format("the points decrease from x = {} to {}", before, here));
    if (here == before && (i == 2 || i == last)) {
      fail(node, fmt::format("the piece at the end of the points has no width at x = {}", here));
    }
  }
}

}  // namespace kavo
