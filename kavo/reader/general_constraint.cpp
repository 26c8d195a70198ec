#include "kavo/reader/general_constraint.h"

#include <fmt/format.h>

#include <array>
#include <cmath>
#include <string>

#include "kavo/error.h"
#include "kavo/model/append.h"
#include "kavo/model/element.h"

namespace kavo::reader {

namespace {

enum class Operands {
  kOne,       // a column
  kColumns,   // any number of columns
  kBinaries,  // any number of 0-1 columns
  kMixed,     // any number of columns and constants
};

// constants: how many the function takes, kAnyNumber: see the function.
struct Entry {
  std::string_view word;
  Operator op;
  Operands operands;
  int constants;
  double ofNothing;  // the value without operands; NaN: there is none
};

constexpr int kAnyNumber = -1;

constexpr std::array<Entry, 20> kTable = {{
    {"MAX", KAVO_OP_MAX, Operands::kMixed, kAnyNumber, kUnknown},
    {"MIN", KAVO_OP_MIN, Operands::kMixed, kAnyNumber, kUnknown},
    {"ABS", KAVO_OP_ABS, Operands::kOne, 0, kUnknown},
    {"AND", KAVO_OP_FOR_ALL, Operands::kBinaries, 0, 1},
    {"OR", KAVO_OP_EXISTS, Operands::kBinaries, 0, 0},
    {"NORM 0", KAVO_OP_COUNT, Operands::kColumns, 0, 0},
    {"NORM 1", KAVO_OP_NORM1, Operands::kColumns, 0, 0},
    {"NORM 2", KAVO_OP_NORM2, Operands::kColumns, 0, 0},
    {"NORM INF", KAVO_OP_NORM_INF, Operands::kColumns, 0, 0},
    {"PWL", KAVO_OP_PIECEWISE_LINEAR_POINTS, Operands::kOne, kAnyNumber, kUnknown},
    {"POLY", KAVO_OP_POLYNOMIAL, Operands::kOne, kAnyNumber, kUnknown},
    {"EXP", KAVO_OP_EXP, Operands::kOne, 0, kUnknown},
    {"EXPA", KAVO_OP_POWER_CONSTANT_BASE, Operands::kOne, 1, kUnknown},
    {"LOG", KAVO_OP_LOG, Operands::kOne, 0, kUnknown},
    {"LOGA", KAVO_OP_LOG_BASE, Operands::kOne, 1, kUnknown},
    {"POW", KAVO_OP_POWER_CONSTANT_EXPONENT, Operands::kOne, 1, kUnknown},
    {"SIN", KAVO_OP_SIN, Operands::kOne, 0, kUnknown},
    {"COS", KAVO_OP_COS, Operands::kOne, 0, kUnknown},
    {"TAN", KAVO_OP_TAN, Operands::kOne, 0, kUnknown},
    {"LOGISTIC", KAVO_OP_SIGMOID, Operands::kOne, 0, kUnknown},
}};

const Entry& entryOf(Function function) { return kTable[static_cast<std::size_t>(function)]; }

[[noreturn]] void fail(const std::string& what) { throw Error(KAVO_INVALID, what); }

void checkNumbers(const Model& model, const GeneralConstraint& constraint, const Entry& entry) {
  const std::size_t columns = constraint.columns.size(), constants = constraint.constants.size();
  if (entry.operands == Operands::kOne && columns != 1)
    fail(fmt::format("{} takes 1 column, not {}", entry.word, columns));
  if (entry.constants != kAnyNumber && constants != static_cast<std::size_t>(entry.constants)) {
    fail(fmt::format("{} takes {} constant{}, not {}", entry.word, entry.constants, &"s"[entry.constants == 1],
                     constants));
  }
  if (entry.operands == Operands::kMixed && columns + constants == 0) fail(fmt::format("{} of nothing", entry.word));
  for (const double value : constraint.constants) {
    if (!(std::abs(value) < kInfinity))
      fail(fmt::format("{} takes numbers below 1e20 in size, not {}", entry.word, value));
  }
  for (const int column : constraint.columns) {
    const auto i = static_cast<std::size_t>(column);
    const unsigned char type = model.columns.type[i];
    const bool isBinary =
        type == KAVO_BINARY || (type == KAVO_INTEGER && model.columns.lower[i] >= 0 && model.columns.upper[i] <= 1);
    if (entry.operands == Operands::kBinaries && !isBinary) {
      fail(fmt::format("{} takes binary columns, {} is not binary", entry.word, elementName(model, KAVO_COLUMN, i)));
    }
  }
}

void checkConstants(const GeneralConstraint& constraint) {
  const std::vector<double>& constants = constraint.constants;
  switch (constraint.function) {
    case Function::kPolynomial:
      if (constants.empty()) fail("POLY takes one coefficient or more");
      break;
    case Function::kExpOfBase:
      if (!(constants[0] > 0)) fail(fmt::format("EXPA takes a base above 0, not {}", constants[0]));
      break;
    case Function::kLogToBase:
      if (!(constants[0] > 0) || constants[0] == 1) {
        fail(fmt::format("LOGA takes a base above 0 that is not 1, not {}", constants[0]));
      }
      break;
    default:
      break;
  }
}

void checkPoints(const std::vector<double>& points) {
  if (points.size() < 4 || points.size() % 2 != 0) fail("a piecewise-linear function takes two points or more");
  for (std::size_t i = 2; i < points.size(); i += 2) {
    if (points[i] < points[i - 2]) {
      fail(fmt::format("the points of a piecewise-linear function must not go back, as they do from {} to {}",
                       points[i - 2], points[i]));
    }
  }
  if (points[0] == points[2] || points[points.size() - 4] == points[points.size() - 2]) {
    fail("the first and the last two points of a piecewise-linear function must differ, for it goes on beyond them");
  }
}

void pushVariable(Expressions& nodes, int column) { nodes.push(KAVO_OP_VARIABLE, column, 0); }
void pushNumber(Expressions& nodes, double value) { nodes.push(KAVO_OP_NUMBER, 0, value); }

// Operators of any number of operands: columns first.
void pushMany(Expressions& nodes, const GeneralConstraint& constraint, const Entry& entry) {
  const std::size_t operands = constraint.columns.size() + constraint.constants.size();
  if (operands == 0) return pushNumber(nodes, entry.ofNothing);
  for (const int column : constraint.columns) {
    pushVariable(nodes, column);
    if (constraint.function == Function::kNorm0) {
      pushNumber(nodes, 0);
      nodes.push(KAVO_OP_NOT_EQUAL, 0, 0);
    }
  }
  for (const double value : constraint.constants) pushNumber(nodes, value);
  nodes.push(entry.op, static_cast<int>(operands), 0);
}

// Operators of one column: constants first, but for those that take them behind it.
void pushOne(Expressions& nodes, const GeneralConstraint& constraint, const Entry& entry) {
  const bool behind = constraint.function == Function::kLogToBase || constraint.function == Function::kPower;
  if (behind) pushVariable(nodes, constraint.columns[0]);
  for (const double value : constraint.constants) pushNumber(nodes, value);
  if (!behind) pushVariable(nodes, constraint.columns[0]);
  nodes.push(entry.op, arity(entry.op) < 0 ? static_cast<int>(constraint.constants.size()) + 1 : 0, 0);
}

}  // namespace

std::string_view wordOf(Function function) { return entryOf(function).word; }

void appendGeneralConstraint(Model& model, const GeneralConstraint& constraint, std::string_view name) {
  const Entry& entry = entryOf(constraint.function);
  checkNumbers(model, constraint, entry);
  checkConstants(constraint);
  if (constraint.function == Function::kPiecewiseLinear) {
    pushPiecewiseLinear(model, constraint.constants, constraint.columns[0]);
  } else if (entry.operands == Operands::kOne) {
    pushOne(model.expressions, constraint, entry);
  } else {
    pushMany(model.expressions, constraint, entry);
  }
  appendFunctionRow(model, constraint.result, name);
}

void appendFunctionRow(Model& model, int result, std::string_view name) {
  const std::string text(name);
  const char* const names[] = {text.c_str()};
  constexpr std::size_t kStart[] = {0, 1};
  constexpr double kSide = 0, kOne = 1;
  appendRows(model, {1, &kSide, &kSide, kStart, &result, &kOne, names});
  model.expressions.push(KAVO_OP_NEGATE, 0, 0);
  model.rows.expression.resize(model.rows.size(), -1);
  model.rows.expression.back() = model.expressions.end();
}

void pushPiecewiseLinear(Model& model, const std::vector<double>& points, int column) {
  checkPoints(points);
  Expressions& nodes = model.expressions;
  for (const double value : points) pushNumber(nodes, value);
  pushVariable(nodes, column);
  nodes.push(KAVO_OP_PIECEWISE_LINEAR_POINTS, static_cast<int>(points.size()) + 1, 0);
}

}  // namespace kavo::reader
