#pragma once

#include <fmt/format.h>

#include <cmath>
#include <vector>

#include "kavo/model/operators.h"
#include "kavo/reader/nl/draft.h"

namespace kavo::reader::nl {

// Reads expression trees, which stand in the file in prefix order, into the draft's expressions, which are in postfix
// order: an operator waits on a stack until its last operand is there. However deep a tree is, nothing recurses.
//
// Truth values and numbers may stand for each other, as the format has it (0 is false, a comparison is 0 or 1). Strings
// may only stand where one is meant: as arguments of a function that takes strings, of a symbolic numberof and as the
// branches of a symbolic if.
template <class Source>
class TreeReader {
 public:
  TreeReader(Source& source, Draft& draft) : source_(source), draft_(draft), nodes_(draft.model.expressions) {}

  // Reads one tree, which may use the first `defined` defined variables, and pushes its nodes; the caller ends the
  // expression.
  void read(int defined) {
    usable_ = defined;
    do {
      readNode();
    } while (!stack_.empty());
  }

 private:
  enum class Kind { constant, number, symbol };

  // An operator some of whose operands are still to come.
  struct Frame {
    Operator op;
    int operands, left;
    int function;  // of a call
  };

  static constexpr int kMostSlopes = 1 << 29;  // so that the number of operands is an int
  static constexpr std::string_view kNode = "a node of an expression (f, h, l, n, o, s or v)";

  void readNode() {
    const char letter = source_.letter(kNode);
    switch (letter) {
      case 'n':
        return pushNumber(finite(source_.number("a number")));
      case 'l':
        return pushNumber(source_.integer("a whole number"));
      case 's':
        return pushNumber(source_.shortInteger("a whole number"));
      case 'v':
        return readVariable();
      case 'o':
        return readOperator();
      case 'f':
        return readCall();
      case 'h':
        return readString();
      default:
        source_.fail(kNode);
    }
  }

  double finite(double value) {
    if (!std::isfinite(value)) source_.fail("a finite number");
    return value;
  }

  void pushNumber(double value) {
    source_.endLine();
    nodes_.push(KAVO_OP_NUMBER, 0, value);
    complete(Kind::constant);
  }

  void readString() {
    nodes_.push(KAVO_OP_STRING, static_cast<int>(nodes_.strings.size()), 0);
    nodes_.strings.emplace_back(source_.string());
    source_.endLine();
    complete(Kind::symbol);
  }

  void readVariable() {
    pushVariable();
    complete(Kind::number);
  }

  void pushVariable() {
    const int variables = draft_.header.variables;
    const int i = source_.integer("the number of a variable");
    if (i < 0 || i >= variables + draft_.header.defined) {
      source_.refuse(fmt::format("there is no variable {}: there are {} variables and {} defined ones", i, variables,
                                 draft_.header.defined));
    }
    if (i < variables) {
      nodes_.push(KAVO_OP_VARIABLE, i, 0);
    } else if (i - variables >= usable_) {
      source_.refuse(fmt::format("defined variable {} is used by one with a lower number", i));
    } else if (draft_.model.definedVariables[static_cast<std::size_t>(i - variables)] >= 0) {
      nodes_.push(KAVO_OP_DEFINED_VARIABLE, i - variables, 0);
    } else {
      source_.refuse(fmt::format("defined variable {} is used before its segment V", i));
    }
    source_.endLine();
  }

  void readOperator() {
    const int number = source_.integer("the number of an operator");
    const int operands = arity(number);
    if (operands == -2 || number >= KAVO_OP_CALL) source_.refuse(fmt::format("there is no operator o{}", number));
    const auto op = static_cast<Operator>(number);
    source_.endLine();
    if (op == KAVO_OP_PIECEWISE_LINEAR) return readPiecewise();
    stack_.push_back({op, operands, operands, -1});
    if (operands < 0) {
      const int count = source_.integer("a number of operands");
      if (count < 1) source_.refuse(fmt::format("{} needs an operand, not {}", operatorName(number), count));
      source_.endLine();
      stack_.back().operands = stack_.back().left = count;
    }
  }

  void readCall() {
    const int function = source_.integer("the number of a function");
    if (function < 0 || function >= draft_.header.functions ||
        !draft_.signatures[static_cast<std::size_t>(function)].declared) {
      source_.refuse(fmt::format("function {} is called, but no segment F before tells of it", function));
    }
    const int count = source_.integer("a number of arguments");
    if (count < 0 || !draft_.signatures[static_cast<std::size_t>(function)].takes(count)) {
      source_.refuse(fmt::format("function \"{}\" is called with {} arguments, other than its segment F says",
                                 draft_.model.functions[static_cast<std::size_t>(function)], count));
    }
    source_.endLine();
    if (count > 0) {
      stack_.push_back({KAVO_OP_CALL, count, count, function});
    } else {
      nodes_.push(KAVO_OP_CALL, 0, function);
      complete(Kind::number);
    }
  }

  // A piecewise-linear term: slope, breakpoint, slope, ..., slope, and the variable it is of.
  void readPiecewise() {
    const int slopes = source_.integer("a number of slopes");
    if (slopes < 2 || slopes > kMostSlopes) {
      source_.refuse(fmt::format("a piecewise-linear term has 2 to {} slopes, not {}", kMostSlopes, slopes));
    }
    source_.endLine();
    double before = -HUGE_VAL;
    for (int i = 1; i <= slopes; ++i) {
      nodes_.push(KAVO_OP_NUMBER, 0, readConstant("a slope"));
      if (i == slopes) break;
      const double breakpoint = readConstant("a breakpoint");
      if (breakpoint < before) source_.refuse("the breakpoints of a piecewise-linear term must not decrease");
      nodes_.push(KAVO_OP_NUMBER, 0, before = breakpoint);
    }
    constexpr std::string_view kVariable = "the variable of a piecewise-linear term";
    if (source_.letter(kVariable) != 'v') source_.fail(kVariable);
    pushVariable();
    nodes_.push(KAVO_OP_PIECEWISE_LINEAR, 2 * slopes, 0);
    complete(Kind::number);
  }

  double readConstant(std::string_view what) {
    double value = 0;
    switch (source_.letter(what)) {
      case 'n':
        value = finite(source_.number(what));
        break;
      case 'l':
        value = source_.integer(what);
        break;
      case 's':
        value = source_.shortInteger(what);
        break;
      default:
        source_.fail(what);
    }
    source_.endLine();
    return value;
  }

  // An operand of the given kind is complete, and with it perhaps operators that waited for it.
  void complete(Kind kind) {
    while (!stack_.empty()) {
      Frame& frame = stack_.back();
      checkOperand(frame, kind);
      if (--frame.left > 0) return;
      nodes_.push(frame.op, arity(frame.op) < 0 ? frame.operands : 0, frame.op == KAVO_OP_CALL ? frame.function : 0);
      kind = frame.op == KAVO_OP_IF_SYMBOLIC ? Kind::symbol : Kind::number;
      stack_.pop_back();
    }
    if (kind == Kind::symbol) source_.refuse("the expression is a string, not a number");
  }

  void checkOperand(const Frame& frame, Kind kind) {
    const auto name = [&frame] { return operatorName(static_cast<int>(frame.op)); };
    const int position = frame.operands - frame.left + 1;
    if (kind == Kind::symbol) {
      const bool takes =
          frame.op == KAVO_OP_NUMBER_OF_SYMBOLIC || (frame.op == KAVO_OP_IF_SYMBOLIC && position > 1) ||
          (frame.op == KAVO_OP_CALL && draft_.signatures[static_cast<std::size_t>(frame.function)].takesStrings);
      if (!takes) source_.refuse(fmt::format("operand {} of {} must be a number, not a string", position, name()));
    } else if (kind != Kind::constant && ((frame.op == KAVO_OP_POWER_CONSTANT_EXPONENT && position == 2) ||
                                          (frame.op == KAVO_OP_POWER_CONSTANT_BASE && position == 1))) {
      source_.refuse(fmt::format("operand {} of {} must be a constant", position, name()));
    }
  }

  Source& source_;
  Draft& draft_;
  Expressions& nodes_;
  std::vector<Frame> stack_;
  int usable_ = 0;  // how many defined variables the tree may use
};

}  // namespace kavo::reader::nl
