#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

#include "kavo/kavo.h"
#include "kavo/model/names.h"
#include "kavo/model/operators.h"

namespace kavo {

inline constexpr double kInfinity = 1e20;  // a bound or side of this size or more is infinite
inline constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

// Variables, a column of arrays per property; all of one length but for names.
struct Columns {
  std::vector<double> lower, upper;
  std::vector<unsigned char> type;  // a kavo_type
  Names names;

  std::size_t size() const { return lower.size(); }
};

// Rows in compressed form: the terms of row i stand at start[i] .. start[i+1]-1.
struct Rows {
  std::vector<std::size_t> start{0};
  std::vector<int> column;
  std::vector<double> value;
  std::vector<double> lower, upper;
  std::vector<int> expression;  // number of the row's expression or -1; empty when no row has one
  std::vector<int> quadratic;   // number of the row's quadratic terms or -1; empty when no row has any
  // The binary column that switches the row on, or -1, and the value (0 or 1) at which it does; both empty when no row
  // is switched.
  std::vector<int> indicator;
  std::vector<unsigned char> indicatorValue;
  Names names;

  std::size_t size() const { return lower.size(); }
};

struct Objective {
  int sense = KAVO_MINIMIZE;
  double constant = 0;
  std::vector<int> column;
  std::vector<double> value;
  int expression = -1;
  int quadratic = -1;
  std::string name;
};

// Sums of value * first * second, one after the other: the terms of sum q stand at start[q] .. start[q+1]-1. No pair of
// columns stands twice in a sum, and first <= second.
struct Quadratics {
  std::vector<std::size_t> start{0};
  std::vector<int> first, second;
  std::vector<double> value;

  std::size_t size() const { return start.size() - 1; }
};

// Special ordered sets: the members of set s stand at start[s] .. start[s+1]-1, in the order of their weights, which
// differ within a set.
struct OrderedSets {
  std::vector<unsigned char> type;  // 1: at most one member is not 0; 2: at most two, which are neighbours
  std::vector<std::size_t> start{0};
  std::vector<int> column;
  std::vector<double> weight;
  Names names;

  std::size_t size() const { return type.size(); }
};

// Expressions in postfix order (operands before their operator), one after the other: the nodes of expression e stand
// at start[e] .. start[e+1]-1, its root last. Per node: the operator; index: the column of a variable, the number of a
// defined variable, the number of a string, the number of operands of an operator that takes any number; value: the
// value of a number, the number of the function of a call. The operands of a piecewise-linear term are slope,
// breakpoint, slope, ..., slope and the variable.
struct Expressions {
  std::vector<std::size_t> start{0};
  std::vector<Operator> op;
  std::vector<int> index;
  std::vector<double> value;
  std::vector<std::string> strings;

  std::size_t size() const { return start.size() - 1; }
  void push(Operator o, int i, double v) { op.push_back(o), index.push_back(i), value.push_back(v); }
  // Takes the last node back.
  void pop() { op.pop_back(), index.pop_back(), value.pop_back(); }
  // Ends the expression whose nodes were pushed since the last end and returns its number.
  int end() { return start.push_back(op.size()), static_cast<int>(size()) - 1; }
};

// A named value of some elements of a kind.
struct Suffix {
  int kind = KAVO_COLUMN;
  std::string name;
  bool real = true;
  std::vector<int> index;
  std::vector<double> value;
};

// `f complements column`: row `row` with column `column`; flags as in the .nl format (1: lower finite, 2: upper
// finite).
struct Complementarity {
  int row, column, flags;
};

struct Model {
  std::string name;
  Columns columns;
  Rows rows;
  std::vector<Objective> objectives;
  Expressions expressions;
  Quadratics quadratics;
  OrderedSets sets;
  std::vector<int> definedVariables;  // the expression of each defined variable; it uses only lower-numbered ones
  std::vector<int> logical;           // the expression of each logical constraint
  Names logicalNames;
  std::vector<Complementarity> complementarity;
  std::vector<std::string> functions;          // imported functions by name
  std::vector<double> primalStart, dualStart;  // empty, or one entry per column or row; NaN: unknown
  std::vector<int> columnStart, rowStart;      // the same of a basis to start from: a kavo_basis each, 0: unknown
  std::vector<std::vector<double>> mipStarts;  // one entry per column each, NaN: not given
  std::vector<Suffix> suffixes;

  // Where it came from.
  std::string file;                    // path as given, "" when built by calls
  bool ampl = false;                   // read from a .nl file: results go to a .sol
  std::vector<int> amplOptions;        // the numbers behind the first one of the .nl file's first line
  double amplTolerance = 0;            // the fourth of them when the second is 3
  std::vector<std::string> readNotes;  // what the user should know about the file, one line each

  bool empty() const {
    return columns.size() == 0 && rows.size() == 0 && objectives.empty() && expressions.size() == 0;
  }
};

}  // namespace kavo
