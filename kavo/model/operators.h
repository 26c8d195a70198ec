#pragma once

#include <string_view>

namespace kavo {

// Operators of expressions. The numbers up to 82 are those of the .nl format, so that its reader needs no table; the
// others are kavo's own.
enum class Operator : int {
  plus = 0,
  minus = 1,
  times = 2,
  divide = 3,
  mod = 4,
  power = 5,
  less = 6,
  min = 11,
  max = 12,
  floor = 13,
  ceil = 14,
  abs = 15,
  negate = 16,
  logicalOr = 20,
  logicalAnd = 21,
  lessThan = 22,
  lessEqual = 23,
  equal = 24,
  greaterEqual = 28,
  greaterThan = 29,
  notEqual = 30,
  logicalNot = 34,
  ifThenElse = 35,
  tanh = 37,
  tan = 38,
  sqrt = 39,
  sinh = 40,
  sin = 41,
  log10 = 42,
  log = 43,
  exp = 44,
  cosh = 45,
  cos = 46,
  atanh = 47,
  atan2 = 48,
  atan = 49,
  asinh = 50,
  asin = 51,
  acosh = 52,
  acos = 53,
  sum = 54,
  integerDivide = 55,
  precision = 56,
  round = 57,
  trunc = 58,
  count = 59,
  numberOf = 60,
  numberOfSymbolic = 61,
  atLeast = 62,
  atMost = 63,
  piecewiseLinear = 64,
  ifSymbolic = 65,
  exactly = 66,
  notAtLeast = 67,
  notAtMost = 68,
  notExactly = 69,
  forAll = 70,
  exists = 71,
  implies = 72,
  ifAndOnlyIf = 73,
  allDifferent = 74,
  notAllDifferent = 75,
  powerConstantExponent = 76,
  square = 77,
  powerConstantBase = 78,
  call = 79,
  number = 80,
  string = 81,
  variable = 82,
  definedVariable = 83,  // index: number of the defined variable
};

// How many operands an operator takes; -1: as many as the node's index says, -2: not an operator of a tree.
int arity(Operator op);
// The operator's name for messages, such as "atan2"; "" for a number that is no operator.
std::string_view operatorName(int op);

}  // namespace kavo
