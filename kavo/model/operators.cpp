#include "kavo/model/operators.h"

#include <array>

namespace kavo {

namespace {

struct Entry {
  std::string_view name;
  int arity = -2;
};

constexpr int kCount = static_cast<int>(Operator::definedVariable) + 1;

constexpr std::array<Entry, kCount> makeTable() {
  std::array<Entry, kCount> table{};
  const auto set = [&table](Operator op, std::string_view name, int arity) {
    table[static_cast<std::size_t>(op)] = {name, arity};
  };
  using enum Operator;
  set(plus, "plus", 2), set(minus, "minus", 2), set(times, "times", 2), set(divide, "divide", 2);
  set(mod, "mod", 2), set(power, "power", 2), set(less, "less", 2);
  set(Operator::min, "min", -1), set(Operator::max, "max", -1);
  set(floor, "floor", 1), set(ceil, "ceil", 1), set(abs, "abs", 1), set(negate, "negate", 1);
  set(logicalOr, "or", 2), set(logicalAnd, "and", 2), set(logicalNot, "not", 1);
  set(lessThan, "<", 2), set(lessEqual, "<=", 2), set(equal, "=", 2);
  set(greaterEqual, ">=", 2), set(greaterThan, ">", 2), set(notEqual, "!=", 2);
  set(ifThenElse, "if", 3), set(ifSymbolic, "symbolic if", 3);
  set(tanh, "tanh", 1), set(tan, "tan", 1), set(sqrt, "sqrt", 1), set(sinh, "sinh", 1), set(sin, "sin", 1);
  set(log10, "log10", 1), set(log, "log", 1), set(exp, "exp", 1), set(cosh, "cosh", 1), set(cos, "cos", 1);
  set(atanh, "atanh", 1), set(atan2, "atan2", 2), set(atan, "atan", 1), set(asinh, "asinh", 1);
  set(asin, "asin", 1), set(acosh, "acosh", 1), set(acos, "acos", 1);
  set(sum, "sum", -1), set(integerDivide, "div", 2), set(precision, "precision", 2);
  set(round, "round", 2), set(trunc, "trunc", 2);
  set(Operator::count, "count", -1), set(numberOf, "numberof", -1), set(numberOfSymbolic, "symbolic numberof", -1);
  set(atLeast, "atleast", 2), set(atMost, "atmost", 2), set(exactly, "exactly", 2);
  set(notAtLeast, "not atleast", 2), set(notAtMost, "not atmost", 2), set(notExactly, "not exactly", 2);
  set(piecewiseLinear, "piecewise-linear", -1);
  set(forAll, "forall", -1), set(exists, "exists", -1), set(implies, "==>", 3), set(ifAndOnlyIf, "<==>", 2);
  set(allDifferent, "alldiff", -1), set(notAllDifferent, "not alldiff", -1);
  set(powerConstantExponent, "power with constant exponent", 2), set(square, "square", 1);
  set(powerConstantBase, "power with constant base", 2);
  set(call, "function call", -1), set(number, "number", 0), set(string, "string", 0);
  set(variable, "variable", 0), set(definedVariable, "defined variable", 0);
  return table;
}

constexpr std::array<Entry, kCount> kTable = makeTable();

Entry entry(int op) { return op >= 0 && op < kCount ? kTable[static_cast<std::size_t>(op)] : Entry{}; }

}  // namespace

int arity(Operator op) { return entry(static_cast<int>(op)).arity; }
std::string_view operatorName(int op) { return entry(op).name; }

}  // namespace kavo
