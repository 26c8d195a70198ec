#include "kavo/reader/nonlinear_tree.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string>

#include "kavo/error.h"

namespace kavo::reader {

namespace {

[[noreturn]] void fail(const std::string& what) { throw Error(KAVO_INVALID, what); }

}  // namespace

const NonlinearTree::Function& NonlinearTree::functionOf(std::string_view word) {
  static constexpr std::array<Function, 18> kFunctions = {{
      {"PLUS", KAVO_OP_SUM, 0},
      {"MINUS", KAVO_OP_MINUS, 2},
      {"MULTIPLY", KAVO_OP_TIMES, 0},
      {"DIVIDE", KAVO_OP_DIVIDE, 2},
      {"UMINUS", KAVO_OP_NEGATE, 1},
      {"SQUARE", KAVO_OP_SQUARE, 1},
      {"SQRT", KAVO_OP_SQRT, 1},
      {"SIN", KAVO_OP_SIN, 1},
      {"COS", KAVO_OP_COS, 1},
      {"TAN", KAVO_OP_TAN, 1},
      {"POW", KAVO_OP_POWER, 2},
      {"EXP", KAVO_OP_EXP, 1},
      {"LOG", KAVO_OP_LOG, 1},
      {"LOG2", KAVO_OP_LOG2, 1},
      {"LOG10", KAVO_OP_LOG10, 1},
      {"LOGISTIC", KAVO_OP_SIGMOID, 1},
      {"TANH", KAVO_OP_TANH, 1},
      {"SIGNPOW", KAVO_OP_SIGNED_POWER, 2},
  }};
  const auto* found =
      std::find_if(kFunctions.begin(), kFunctions.end(), [word](const Function& f) { return f.word == word; });
  if (found == kFunctions.end()) fail(fmt::format("there is no operator {} in nonlinear constraints", word));
  return *found;
}

void NonlinearTree::addNumber(double value, int parent) {
  if (!std::isfinite(value)) fail(fmt::format("expected a finite number, found {}", value));
  attach(parent);
  nodes_.push(KAVO_OP_NUMBER, 0, value);
}

void NonlinearTree::addColumn(int column, int parent) {
  attach(parent);
  nodes_.push(KAVO_OP_VARIABLE, column, 0);
}

void NonlinearTree::addOperator(std::string_view word, int parent) {
  const Function& function = functionOf(word);
  attach(parent);
  open_.push_back({&function, count_ - 1, 0, 0, 0});
}

void NonlinearTree::finish() {
  if (count_ == 0) fail("the nonlinear constraint has no node");
  while (!open_.empty()) closeLast();
}

void NonlinearTree::attach(int parent) {
  if (count_ == std::numeric_limits<int>::max()) fail("more nodes than this program can count");
  while (!open_.empty() && open_.back().number != parent) closeLast();
  if (open_.empty() && (count_ > 0 || parent != -1)) {
    fail(
        fmt::format("node {} of the nonlinear constraint has the parent {}; the first has -1, and any other one of the "
                    "operators that it stands below",
                    count_, parent));
  }
  ++count_;
  if (open_.empty()) return;
  Open& open = open_.back();
  if (open.operands == 0) open.first = nodes_.op.size();
  if (open.operands == 1) open.second = nodes_.op.size();
  ++open.operands;
}

// A power with a constant in the place of the exponent or the base.
Operator NonlinearTree::powerOf(const Open& open) const {
  const auto isNumber = [this](std::size_t begin, std::size_t end) {
    return end == begin + 1 && nodes_.op[begin] == KAVO_OP_NUMBER;
  };
  if (isNumber(open.second, nodes_.op.size())) {
    return open.function->op == KAVO_OP_POWER ? KAVO_OP_POWER_CONSTANT_EXPONENT : KAVO_OP_SIGNED_POWER;
  }
  if (open.function->op == KAVO_OP_SIGNED_POWER) fail("the exponent of SIGNPOW must be a constant");
  return isNumber(open.first, open.second) ? KAVO_OP_POWER_CONSTANT_BASE : KAVO_OP_POWER;
}

void NonlinearTree::closeLast() {
  const Open open = open_.back();
  const Function& function = *open.function;
  if (open.operands == 0 || (function.operands != 0 && open.operands != function.operands)) {
    fail(fmt::format("{}, node {} of the nonlinear constraint, takes {} operand{}, not {}", function.word, open.number,
                     function.operands == 0 ? "1 or more" : std::to_string(function.operands),
                     &"s"[function.operands == 1], open.operands));
  }
  open_.pop_back();
  switch (function.op) {
    case KAVO_OP_SUM:
      if (open.operands == 2) nodes_.push(KAVO_OP_PLUS, 0, 0);
      if (open.operands > 2) nodes_.push(KAVO_OP_SUM, static_cast<int>(open.operands), 0);
      break;
    case KAVO_OP_TIMES:
      for (std::size_t i = 1; i < open.operands; ++i) nodes_.push(KAVO_OP_TIMES, 0, 0);
      break;
    case KAVO_OP_POWER:
    case KAVO_OP_SIGNED_POWER:
      nodes_.push(powerOf(open), 0, 0);
      break;
    default:
      nodes_.push(function.op, 0, 0);
  }
}

}  // namespace kavo::reader
