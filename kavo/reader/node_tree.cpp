#include "kavo/reader/node_tree.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "kavo/error.h"
#include "kavo/reader/text.h"

namespace kavo::reader {

namespace {

// operands: how many, or kAnyNumber.
struct Entry {
  std::string_view word;
  Operator op;
  int operands;
};

constexpr int kAnyNumber = -1;

constexpr std::array<Entry, 18> kTable = {{
    {"PLUS", KAVO_OP_SUM, kAnyNumber},
    {"MINUS", KAVO_OP_MINUS, 2},
    {"MULTIPLY", KAVO_OP_TIMES, kAnyNumber},
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

[[noreturn]] void fail(const std::string& what) { throw Error(KAVO_INVALID, what); }

}  // namespace

void NodeTree::placeUnder(int parent) {
  if (count_ == 0 && parent != -1) fail(fmt::format("the first node has the parent {}, not -1", parent));
  if (count_ > 0) {
    while (!open_.empty() && open_.back().node > parent) close();
    if (open_.empty() || open_.back().node != parent) {
      fail(fmt::format("node {} has the parent {}, which takes no operand there", count_, parent));
    }
  }
  ++count_;
}

void NodeTree::addOperator(std::string_view word, int parent) {
  const auto* found =
      std::find_if(kTable.begin(), kTable.end(), [word](const Entry& entry) { return isWord(word, entry.word); });
  if (found == kTable.end()) fail(fmt::format("there is no operator {}", quoted(word)));
  placeUnder(parent);
  open_.push_back({static_cast<std::size_t>(found - kTable.begin()), count_ - 1, 0, false});
}

void NodeTree::addColumn(int column, int parent) { addLeaf(KAVO_OP_VARIABLE, column, 0, parent); }

void NodeTree::addNumber(double value, int parent) {
  if (!std::isfinite(value)) fail(fmt::format("node {} is the number {}, which is not finite", count_, value));
  addLeaf(KAVO_OP_NUMBER, 0, value, parent);
}

void NodeTree::addLeaf(Operator op, int index, double value, int parent) {
  placeUnder(parent);
  nodes_.push(op, index, value);
  complete();
}

void NodeTree::complete() {
  if (open_.empty()) return;
  Frame& frame = open_.back();
  ++frame.operands;
  if (frame.operands == 1) frame.firstIsNumber = nodes_.op.back() == KAVO_OP_NUMBER;
  if (frame.operands > 1 && kTable[frame.entry].op == KAVO_OP_TIMES) nodes_.push(KAVO_OP_TIMES, 0, 0);
}

void NodeTree::close() {
  const Frame frame = open_.back();
  const auto [word, op, operands] = kTable[frame.entry];
  if (operands == kAnyNumber ? frame.operands == 0 : frame.operands != operands) {
    fail(fmt::format("node {}, {}, takes {} operand{}, not {}", frame.node, word,
                     operands == kAnyNumber ? std::string("at least 1") : std::to_string(operands), &"s"[operands != 2],
                     frame.operands));
  }
  // The last operand ends with its root.
  const bool lastIsNumber = nodes_.op.back() == KAVO_OP_NUMBER;
  if (op == KAVO_OP_SIGNED_POWER && !lastIsNumber) fail(fmt::format("node {}, {}, needs a number", frame.node, word));
  if (op == KAVO_OP_POWER) {
    nodes_.push(lastIsNumber          ? KAVO_OP_POWER_CONSTANT_EXPONENT
                : frame.firstIsNumber ? KAVO_OP_POWER_CONSTANT_BASE
                                      : KAVO_OP_POWER,
                0, 0);
  } else if (op == KAVO_OP_SUM && frame.operands > 1) {
    nodes_.push(frame.operands == 2 ? KAVO_OP_PLUS : KAVO_OP_SUM, frame.operands == 2 ? 0 : frame.operands, 0);
  } else if (operands != kAnyNumber) {
    nodes_.push(op, 0, 0);
  }
  open_.pop_back();
  complete();
}

void NodeTree::finish() {
  if (count_ == 0) fail("an expression needs a node");
  while (!open_.empty()) close();
}

}  // namespace kavo::reader
