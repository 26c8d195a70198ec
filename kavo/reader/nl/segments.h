#pragma once

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <unordered_set>
#include <vector>

#include "kavo/reader/nl/draft.h"
#include "kavo/reader/nl/tree.h"

namespace kavo::reader::nl {

// Reads the segments behind the header into a draft, checking every count and index where it stands. Segments may come
// in any order, but functions (F) before their calls and defined variables (V) before their use. What must come once
// may not come twice.
template <class Source>
class SegmentReader {
 public:
  SegmentReader(Source& source, Draft& draft)
      : source_(source), draft_(draft), header_(draft.header), model_(draft.model), tree_(source, draft) {}

  void readAll() {
    while (!source_.atEnd()) {
      source_.enter(' ');
      constexpr std::string_view kExpected = "a segment (one of F S V C L O d x r b k K J G)";
      const char segment = source_.letter(kExpected);
      constexpr std::string_view kSegments = "FSVCLOdxrbkKJG";
      if (kSegments.find(segment) == std::string_view::npos) source_.fail(kExpected);
      source_.enter(segment);
      readSegment(segment);
    }
    source_.enter(' ');
    if (const std::string missing = draft_.missing(); !missing.empty()) source_.fail(missing);
    if (const std::string mismatch = draft_.columnMismatch(); !mismatch.empty()) {
      source_.enter('k');
      source_.setToken(columnCounts_);
      source_.refuse(mismatch);
    }
  }

 private:
  void readSegment(char segment) {
    switch (segment) {
      case 'F':
        return readFunction();
      case 'S':
        return readSuffix();
      case 'V':
        return readDefined();
      case 'C':
        return readBody();
      case 'L':
        return readLogical();
      case 'O':
        return readObjective();
      case 'd':
        return readStart(draft_.dual, model_.dualStart, header_.constraints, "constraint");
      case 'x':
        return readStart(draft_.primal, model_.primalStart, header_.variables, "variable");
      case 'r':
        return readSides();
      case 'b':
        return readBounds();
      case 'k':
        return readColumnCounts(true);
      case 'K':
        return readColumnCounts(false);
      case 'J':
        return readRowTerms();
      case 'G':
        return readObjectiveTerms();
    }
  }

  // ---- pieces ----

  // A number from 0 to limit - 1.
  int below(int limit, std::string_view what) {
    const int i = source_.integer(what);
    if (static_cast<unsigned>(i) >= static_cast<unsigned>(limit)) [[unlikely]]
      failBelow(i, limit, what);
    return i;
  }
  [[noreturn]] void failBelow(int i, int limit, std::string_view what) {
    if (limit <= 0) source_.refuse(fmt::format("found {} as {}, but the header announces none", i, what));
    source_.refuse(fmt::format("expected {} from 0 to {}, found {}", what, limit - 1, i));
  }

  // A number from 0 to most of the entries that follow.
  int count(int most, std::string_view of) {
    const int n = source_.integer("a number of entries");
    if (n < 0 || n > most) source_.refuse(fmt::format("expected 0 to {} {}, found {}", most, of, n));
    return n;
  }

  // The number behind the letter of a segment.
  int number(int limit, std::string_view what) {
    const int i = below(limit, what);
    source_.setNumber(i);
    return i;
  }

  void once(bool isSecond) {
    if (isSecond) source_.refuse("this segment comes twice");
  }

  double coefficient() {
    const double value = source_.number("a coefficient");
    if (!(std::abs(value) < kInfinity)) [[unlikely]]
      source_.fail("a coefficient below 1e20 in size");
    return value;
  }

  // ---- functions and suffixes ----

  void readFunction() {
    const int i = number(header_.functions, "the number of a function");
    Signature& signature = draft_.signatures[static_cast<std::size_t>(i)];
    once(signature.declared);
    const int type = source_.integer("a type of function");
    if (type != 0 && type != 1)
      source_.refuse(fmt::format("expected 0 or 1 as the type of a function, found {}", type));
    const int arguments = source_.integer("a number of arguments");
    if (arguments == std::numeric_limits<int>::min()) source_.fail("a number of arguments");
    model_.functions[static_cast<std::size_t>(i)] = source_.name("the name of a function");
    source_.endLine();
    signature = {true, type == 1, arguments};
  }

  void readSuffix() {
    constexpr int kReal = 4;
    const int flags = number(8, "the kind of a suffix");
    const int kind = flags & 3;
    const int sizes[] = {header_.variables, header_.constraints + header_.logical, header_.objectives, 1};
    const int n = count(sizes[kind], "values of a suffix");
    Suffix suffix;
    suffix.kind = kind;
    suffix.real = (flags & kReal) != 0;
    suffix.name = source_.name("the name of a suffix");
    if (!suffixes_.insert(fmt::format("{} {}", kind, suffix.name)).second) source_.refuse("this suffix comes twice");
    source_.endLine();
    suffix.index.reserve(static_cast<std::size_t>(n));
    suffix.value.reserve(static_cast<std::size_t>(n));
    for (int k = 0; k < n; ++k) {
      suffix.index.push_back(below(sizes[kind], "the number of an element"));
      suffix.value.push_back(suffix.real ? source_.number("a value") : source_.integer("a whole value"));
      if (std::isnan(suffix.value.back())) source_.fail("a value");
      source_.endLine();
    }
    std::vector<int> sorted = suffix.index;
    std::sort(sorted.begin(), sorted.end());
    const auto twice = std::adjacent_find(sorted.begin(), sorted.end());
    if (twice != sorted.end()) source_.refuse(fmt::format("element {} has two values", *twice));
    if (kind == KAVO_ROW) leaveOutLogical(suffix);
    model_.suffixes.push_back(std::move(suffix));
  }

  // Logical constraints are numbered behind the others; the model has no place for their values.
  void leaveOutLogical(Suffix& suffix) {
    std::size_t kept = 0;
    for (std::size_t k = 0; k < suffix.index.size(); ++k) {
      if (suffix.index[k] >= header_.constraints) continue;
      suffix.index[kept] = suffix.index[k];
      suffix.value[kept++] = suffix.value[k];
    }
    if (kept == suffix.index.size()) return;
    model_.readNotes.push_back(fmt::format("{}: suffix {}: the values of {} logical constraints are left out",
                                           model_.file, suffix.name, suffix.index.size() - kept));
    suffix.index.resize(kept);
    suffix.value.resize(kept);
  }

  // ---- expressions ----

  // Reads a tree. A number alone is taken back and stored in `constant`, and the result is -1.
  int readExpression(double& constant) {
    Expressions& nodes = model_.expressions;
    tree_.read();
    if (nodes.op.size() == nodes.start.back() + 1 && nodes.op.back() == Operator::number) {
      constant = nodes.value.back();
      nodes.pop();
      return -1;
    }
    return nodes.end();
  }

  void readBody() {
    const int i = number(header_.constraints, "the number of a constraint");
    once(draft_.bodies[static_cast<std::size_t>(i)]);
    draft_.bodies[static_cast<std::size_t>(i)] = true;
    source_.endLine();
    double constant = 0;
    const int expression = readExpression(constant);
    if (constant != 0) draft_.constants.emplace_back(i, constant);
    if (expression < 0) return;
    auto& expressions = model_.rows.expression;
    if (expressions.empty()) expressions.assign(model_.rows.size(), -1);
    expressions[static_cast<std::size_t>(i)] = expression;
  }

  void readObjective() {
    const int i = number(header_.objectives, "the number of an objective");
    once(draft_.objectiveBodies[static_cast<std::size_t>(i)]);
    draft_.objectiveBodies[static_cast<std::size_t>(i)] = true;
    const int sense = source_.integer("a direction");
    if (sense != KAVO_MINIMIZE && sense != KAVO_MAXIMIZE) {
      source_.refuse(fmt::format("expected 0 (minimise) or 1 (maximise), found {}", sense));
    }
    source_.endLine();
    Objective& objective = model_.objectives[static_cast<std::size_t>(i)];
    objective.sense = sense;
    objective.expression = readExpression(objective.constant);
  }

  void readLogical() {
    const int i = number(header_.logical, "the number of a logical constraint");
    once(model_.logical[static_cast<std::size_t>(i)] >= 0);
    source_.endLine();
    tree_.read();
    model_.logical[static_cast<std::size_t>(i)] = model_.expressions.end();
  }

  // A defined variable: a sum of linear terms and a tree. The terms come first in the file and in the expression.
  void readDefined() {
    const int i = source_.integer("the number of a defined variable");
    if (i < header_.variables || i - header_.variables >= header_.defined) {
      source_.refuse(fmt::format("expected the number of a defined variable ({} of them, from {} on), found {}",
                                 header_.defined, header_.variables, i));
    }
    source_.setNumber(i);
    int& defined = model_.definedVariables[static_cast<std::size_t>(i - header_.variables)];
    once(defined >= 0);
    const int linear = count(header_.variables, "linear terms");
    // The constraint or objective that alone uses it (0: several do) is of no use here.
    if (source_.integer("the place of use of a defined variable") < 0) source_.fail("the place of use, 0 or more");
    source_.endLine();
    Expressions& nodes = model_.expressions;
    int terms = 0;
    for (int k = 0; k < linear; ++k) terms += pushLinearTerm();
    tree_.read();
    ++terms;
    if (terms > 1 && nodes.op.back() == Operator::number && nodes.value.back() == 0) {
      nodes.pop();
      --terms;
    }
    if (terms == 2) nodes.push(Operator::plus, 0, 0);
    if (terms > 2) nodes.push(Operator::sum, terms, 0);
    defined = nodes.end();
  }

  // Returns how many operands of a sum it made.
  int pushLinearTerm() {
    Expressions& nodes = model_.expressions;
    const int column = below(header_.variables, "the number of a variable");
    const double value = coefficient();
    source_.endLine();
    if (value == 0) return 0;
    if (value != 1) nodes.push(Operator::number, 0, value);
    nodes.push(Operator::variable, column, 0);
    if (value != 1) nodes.push(Operator::times, 0, 0);
    return 1;
  }

  // ---- start values and bounds ----

  void readStart(bool& seen, std::vector<double>& start, int size, std::string_view kind) {
    once(seen);
    seen = true;
    const int n = count(size, "start values");
    source_.endLine();
    if (n > 0) start.assign(static_cast<std::size_t>(size), kUnknown);
    for (int k = 0; k < n; ++k) {
      const int i = below(size, kind);
      double& value = start[static_cast<std::size_t>(i)];
      if (!std::isnan(value)) source_.refuse(fmt::format("{} {} has two start values", kind, i));
      value = source_.number("a start value");
      if (!std::isfinite(value)) source_.fail("a finite start value");
      source_.endLine();
    }
  }

  // A bound, with infinite ones as such.
  double bound() {
    constexpr double kNone = std::numeric_limits<double>::infinity();
    const double value = source_.number("a bound");
    if (std::isnan(value)) source_.fail("a bound");
    if (value >= kInfinity) return kNone;
    return value <= -kInfinity ? -kNone : value;
  }

  // Reads a pair of bounds, which was infinite before. Returns the letter when it is no pair of bounds.
  char readPair(std::string_view expected, double& lower, double& upper) {
    const char type = source_.letter(expected);
    switch (type) {
      case '0':
        lower = bound();
        upper = bound();
        return '\0';
      case '1':
        upper = bound();
        return '\0';
      case '2':
        lower = bound();
        return '\0';
      case '3':
        return '\0';
      case '4':
        lower = upper = bound();
        if (!std::isfinite(lower)) source_.fail("a finite number behind 4 (equal to)");
        return '\0';
      default:
        return type;
    }
  }

  void readBounds() {
    once(draft_.bounds);
    draft_.bounds = true;
    source_.endLine();
    constexpr std::string_view kExpected = "a kind of bounds (0 to 4)";
    auto& columns = model_.columns;
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (readPair(kExpected, columns.lower[i], columns.upper[i]) != '\0') source_.fail(kExpected);
      source_.endLine();
    }
  }

  void readSides() {
    once(draft_.sides);
    draft_.sides = true;
    source_.endLine();
    constexpr std::string_view kExpected = "a kind of sides (0 to 5)";
    auto& rows = model_.rows;
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const char other = readPair(kExpected, rows.lower[i], rows.upper[i]);
      if (other == '5') {
        readComplement(i);
      } else if (other != '\0') {
        source_.fail(kExpected);
      }
      source_.endLine();
    }
  }

  // A row that complements a variable: which of its sides are at 0 is told by which bounds of the variable are finite.
  void readComplement(std::size_t row) {
    const int flags = below(4, "which bounds of the complementing variable are finite,");
    const int variable = source_.integer("the number of a variable");
    if (variable < 1 || variable > header_.variables) {
      source_.refuse(
          fmt::format("expected the number of a variable from 1 to {}, found {}", header_.variables, variable));
    }
    if ((flags & 2) == 0) model_.rows.lower[row] = 0;
    if ((flags & 1) == 0) model_.rows.upper[row] = 0;
    model_.complementarity.push_back({static_cast<int>(row), variable - 1, flags});
  }

  // ---- linear parts ----

  void readColumnCounts(bool cumulative) {
    once(columnCounts_ != nullptr);
    columnCounts_ = source_.token();
    const int expected = header_.variables - 1;
    const int n = source_.integer("a number of columns");
    if (n != expected && (n != 0 || expected > 0)) {
      source_.refuse(fmt::format("expected {} columns (all but the last), found {}", expected, n));
    }
    source_.endLine();
    draft_.announced.reserve(static_cast<std::size_t>(std::max(n, 0)));
    int before = 0;
    for (int i = 0; i < n; ++i) {
      const int next = source_.integer("a number of nonzeros");
      const int size = cumulative ? next - before : next;
      if (next < 0 || size < 0 || size > header_.constraints) {
        source_.refuse(
            fmt::format("column {} cannot have {} nonzeros in {} constraints", i, size, header_.constraints));
      }
      before = next;
      draft_.announced.push_back(size);
      source_.endLine();
    }
  }

  // A term of a linear part; `stamp` is a number of this part alone.
  Draft::Use& readTerm(int stamp, int& column, double& value) {
    column = below(header_.variables, "the number of a variable");
    Draft::Use& use = draft_.uses[static_cast<std::size_t>(column)];
    if (use.last == stamp) [[unlikely]]
      source_.refuse(fmt::format("variable {} comes twice", column));
    use.last = stamp;
    value = coefficient();
    source_.endLine();
    return use;
  }

  void readRowTerms() {
    const int row = number(header_.constraints, "the number of a constraint");
    int& terms = draft_.rowTerms[static_cast<std::size_t>(row)];
    once(terms >= 0);
    const std::size_t rest = model_.rows.column.size() - draft_.terms;
    const int most = static_cast<int>(std::min(static_cast<std::size_t>(header_.variables), rest));
    terms = count(most, "terms (by the variables and nonzeros that the header announces)");
    source_.endLine();
    int* column = model_.rows.column.data() + draft_.terms;
    double* value = model_.rows.value.data() + draft_.terms;
    for (int k = 0; k < terms; ++k) {
      ++readTerm(row, column[k], value[k]).rows;
    }
    draft_.rowBegin[static_cast<std::size_t>(row)] = draft_.terms;
    draft_.terms += static_cast<std::size_t>(terms);
    draft_.rowsInOrder = draft_.rowsInOrder && row > draft_.lastRow;
    draft_.lastRow = row;
  }

  void readObjectiveTerms() {
    const int i = number(header_.objectives, "the number of an objective");
    once(draft_.objectiveParts[static_cast<std::size_t>(i)]);
    draft_.objectiveParts[static_cast<std::size_t>(i)] = true;
    const std::size_t rest = static_cast<std::size_t>(header_.gradients) - draft_.gradients;
    const int most = static_cast<int>(std::min(static_cast<std::size_t>(header_.variables), rest));
    const auto terms = static_cast<std::size_t>(
        count(most, "terms (by the variables and gradient nonzeros that the header announces)"));
    source_.endLine();
    Objective& objective = model_.objectives[static_cast<std::size_t>(i)];
    objective.column.resize(terms);
    objective.value.resize(terms);
    const int stamp = -2 - i;  // apart from all rows, and from -1: none
    for (std::size_t k = 0; k < terms; ++k) readTerm(stamp, objective.column[k], objective.value[k]);
    draft_.gradients += terms;
  }

  Source& source_;
  Draft& draft_;
  const Header& header_;
  Model& model_;
  TreeReader<Source> tree_;
  std::unordered_set<std::string> suffixes_;  // kinds and names that came
  const char* columnCounts_ = nullptr;        // where the segment k or K stands
};

}  // namespace kavo::reader::nl
