#include "kavo/model/operators.h"

#include <array>

namespace kavo {

namespace {

struct Entry {
  const char* name = "";
  int arity = -2;
};

constexpr int kCount = KAVO_OP_PIECEWISE_LINEAR_POINTS + 1;

constexpr std::array<Entry, kCount> makeTable() {
  std::array<Entry, kCount> table{};
  const auto set = [&table](Operator op, const char* name, int arity) {
    table[static_cast<std::size_t>(op)] = {name, arity};
  };
  set(KAVO_OP_PLUS, "plus", 2), set(KAVO_OP_MINUS, "minus", 2), set(KAVO_OP_TIMES, "times", 2),
      set(KAVO_OP_DIVIDE, "divide", 2);
  set(KAVO_OP_MOD, "mod", 2), set(KAVO_OP_POWER, "power", 2), set(KAVO_OP_LESS, "less", 2);
  set(KAVO_OP_MIN, "min", -1), set(KAVO_OP_MAX, "max", -1);
  set(KAVO_OP_FLOOR, "floor", 1), set(KAVO_OP_CEIL, "ceil", 1), set(KAVO_OP_ABS, "abs", 1),
      set(KAVO_OP_NEGATE, "negate", 1);
  set(KAVO_OP_LOGICAL_OR, "or", 2), set(KAVO_OP_LOGICAL_AND, "and", 2), set(KAVO_OP_LOGICAL_NOT, "not", 1);
  set(KAVO_OP_LESS_THAN, "<", 2), set(KAVO_OP_LESS_EQUAL, "<=", 2), set(KAVO_OP_EQUAL, "=", 2);
  set(KAVO_OP_GREATER_EQUAL, ">=", 2), set(KAVO_OP_GREATER_THAN, ">", 2), set(KAVO_OP_NOT_EQUAL, "!=", 2);
  set(KAVO_OP_IF_THEN_ELSE, "if", 3), set(KAVO_OP_IF_SYMBOLIC, "symbolic if", 3);
  set(KAVO_OP_TANH, "tanh", 1), set(KAVO_OP_TAN, "tan", 1), set(KAVO_OP_SQRT, "sqrt", 1), set(KAVO_OP_SINH, "sinh", 1),
      set(KAVO_OP_SIN, "sin", 1);
  set(KAVO_OP_LOG10, "log10", 1), set(KAVO_OP_LOG, "log", 1), set(KAVO_OP_EXP, "exp", 1), set(KAVO_OP_COSH, "cosh", 1),
      set(KAVO_OP_COS, "cos", 1);
  set(KAVO_OP_ATANH, "atanh", 1), set(KAVO_OP_ATAN2, "atan2", 2), set(KAVO_OP_ATAN, "atan", 1),
      set(KAVO_OP_ASINH, "asinh", 1);
  set(KAVO_OP_ASIN, "asin", 1), set(KAVO_OP_ACOSH, "acosh", 1), set(KAVO_OP_ACOS, "acos", 1);
  set(KAVO_OP_SUM, "sum", -1), set(KAVO_OP_INTEGER_DIVIDE, "div", 2), set(KAVO_OP_PRECISION, "precision", 2);
  set(KAVO_OP_ROUND, "round", 2), set(KAVO_OP_TRUNC, "trunc", 2);
  set(KAVO_OP_COUNT, "count", -1), set(KAVO_OP_NUMBER_OF, "numberof", -1),
      set(KAVO_OP_NUMBER_OF_SYMBOLIC, "symbolic numberof", -1);
  set(KAVO_OP_AT_LEAST, "atleast", 2), set(KAVO_OP_AT_MOST, "atmost", 2), set(KAVO_OP_EXACTLY, "exactly", 2);
  set(KAVO_OP_NOT_AT_LEAST, "not atleast", 2), set(KAVO_OP_NOT_AT_MOST, "not atmost", 2),
      set(KAVO_OP_NOT_EXACTLY, "not exactly", 2);
  set(KAVO_OP_PIECEWISE_LINEAR, "piecewise-linear", -1);
  set(KAVO_OP_FOR_ALL, "forall", -1), set(KAVO_OP_EXISTS, "exists", -1), set(KAVO_OP_IMPLIES, "==>", 3),
      set(KAVO_OP_IF_AND_ONLY_IF, "<==>", 2);
  set(KAVO_OP_ALL_DIFFERENT, "alldiff", -1), set(KAVO_OP_NOT_ALL_DIFFERENT, "not alldiff", -1);
  set(KAVO_OP_POWER_CONSTANT_EXPONENT, "power with constant exponent", 2), set(KAVO_OP_SQUARE, "square", 1);
  set(KAVO_OP_POWER_CONSTANT_BASE, "power with constant base", 2);
  set(KAVO_OP_CALL, "function call", -1), set(KAVO_OP_NUMBER, "number", 0), set(KAVO_OP_STRING, "string", 0);
  set(KAVO_OP_VARIABLE, "variable", 0), set(KAVO_OP_DEFINED_VARIABLE, "defined variable", 0);
  set(KAVO_OP_LOG_BASE, "logarithm to a base", 2), set(KAVO_OP_LOG2, "log2", 1), set(KAVO_OP_SIGMOID, "sigmoid", 1);
  set(KAVO_OP_SIGNED_POWER, "signed power", 2), set(KAVO_OP_POLYNOMIAL, "polynomial", -1);
  set(KAVO_OP_NORM1, "norm1", -1), set(KAVO_OP_NORM2, "norm2", -1), set(KAVO_OP_NORM_INF, "infinity norm", -1);
  set(KAVO_OP_PIECEWISE_LINEAR_POINTS, "piecewise-linear by points", -1);
  return table;
}

constexpr std::array<Entry, kCount> kTable = makeTable();

Entry entry(int op) { return op >= 0 && op < kCount ? kTable[static_cast<std::size_t>(op)] : Entry{}; }

}  // namespace

int arity(int op) { return entry(op).arity; }
std::string_view operatorName(int op) { return entry(op).name; }

}  // namespace kavo
