#include "kavo/writer/sol_suffixes.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace kavo::writer {

namespace {

constexpr int kRealSuffix = 4;  // added to the kind of a suffix whose values are not whole

void writeHead(Text& text, int kind, std::size_t count, std::string_view name, std::string_view table = {}) {
  text << "suffix ";
  text.number(static_cast<std::size_t>(kind)) << ' ';
  text.number(count) << ' ';
  text.number(name.size() + 1) << ' ';
  if (table.empty()) {
    text << "0 0\n" << name << '\n';
    return;
  }
  text.number(table.size() + 1) << ' ';
  text.number(static_cast<std::size_t>(std::ranges::count(table, '\n')) + 1) << '\n' << name << '\n' << table << '\n';
}

void writeReals(Text& text, int kind, std::string_view name, const std::vector<double>& values) {
  const auto known =
      static_cast<std::size_t>(std::ranges::count_if(values, [](double value) { return !std::isnan(value); }));
  if (known == 0) return;
  writeHead(text, kind | kRealSuffix, known, name);
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (!std::isnan(values[i])) (text.number(i) << ' ').number(values[i]) << '\n';
  }
}

// AMPL's words for basis statuses by number: 1 bas, 2 sup, 3 low, 4 upp, 5 equ.
std::size_t amplStatus(int basis, bool fixed) {
  switch (basis) {
    case KAVO_BASIC:
      return 1;
    case KAVO_BASIS_LOWER:
      return fixed ? 5 : 3;
    case KAVO_BASIS_UPPER:
      return fixed ? 5 : 4;
    default:
      return 2;
  }
}

struct Bounds {
  const std::vector<double>&lower, &upper;
  bool areEqual(std::size_t i) const { return lower[i] == upper[i]; }
};

Bounds boundsOf(const Model& model, int kind) {
  if (kind == KAVO_COLUMN) return {model.columns.lower, model.columns.upper};
  return {model.rows.lower, model.rows.upper};
}

void writeStatuses(Text& text, const Model& model, const Results& results, int kind) {
  const Statuses& basis = ownOrFixedBasis(results, kind);
  if (!basis) return;
  const Bounds bounds = boundsOf(model, kind);
  writeHead(text, kind, basis->size(), "sstatus");
  for (std::size_t i = 0; i < basis->size(); ++i) {
    (text.number(i) << ' ').number(amplStatus((*basis)[i], bounds.areEqual(i))) << '\n';
  }
}

// AMPL's words for members of a conflict, which it takes from the file. No empty lines: readers stumble over them.
constexpr std::string_view kConflictTable =
    "0\tnon\tnot in the conflict\n1\tlow\tlower bound or side\n2\tfix\tfixed\n3\tupp\tupper bound or side\n"
    "4\tmem\tmember\n5\tpmem\tpossible member\n6\tplow\tpossibly the lower bound or side\n"
    "7\tpupp\tpossibly the upper bound or side";

std::size_t amplConflict(unsigned char mark, bool equal, bool minimal) {
  switch (mark) {
    case KAVO_CONFLICT_NONE:
      return 0;
    case KAVO_CONFLICT_LOWER:
      return minimal ? 1 : 6;
    case KAVO_CONFLICT_UPPER:
      return minimal ? 3 : 7;
    default:
      if (!minimal) return 5;
      return mark == KAVO_CONFLICT_BOTH && equal ? 2 : 4;
  }
}

// One kind of suffix of the conflict; only members are listed.
void writeConflictOf(Text& text, int kind, const std::vector<std::size_t>& words, bool& tableGiven) {
  const std::size_t members = words.size() - static_cast<std::size_t>(std::ranges::count(words, std::size_t{0}));
  if (members == 0) return;
  writeHead(text, kind, members, "iis", std::exchange(tableGiven, true) ? std::string_view() : kConflictTable);
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (words[i] != 0) (text.number(i) << ' ').number(words[i]) << '\n';
  }
}

// In AMPL logical constraints are numbered behind the rows. Special ordered sets are nothing that it knows by number.
void writeConflict(Text& text, const Model& model, const Conflict& conflict) {
  bool tableGiven = false;
  for (const int kind : {KAVO_COLUMN, KAVO_ROW}) {
    const Bounds bounds = boundsOf(model, kind);
    const auto& marks = conflict.marks[static_cast<std::size_t>(kind)];
    std::vector<std::size_t> words;
    words.reserve(marks.size());
    for (std::size_t i = 0; i < marks.size(); ++i) {
      words.push_back(amplConflict(marks[i], bounds.areEqual(i), conflict.minimal));
    }
    if (kind == KAVO_ROW) {
      for (const unsigned char mark : conflict.marks[KAVO_LOGICAL])
        words.push_back(amplConflict(mark, false, conflict.minimal));
    }
    writeConflictOf(text, kind, words, tableGiven);
  }
}

// A number about the solved objective, given to the objective and to the problem.
void writeAbout(Text& text, const Model& model, std::size_t objective, std::string_view name, double value) {
  if (std::isnan(value)) return;
  if (objective < model.objectives.size()) {
    writeHead(text, KAVO_OBJECTIVE | kRealSuffix, 1, name);
    (text.number(objective) << ' ').number(value) << '\n';
  }
  writeReals(text, KAVO_MODEL, name, {value});
}

void writeRanges(Text& text, const Answer& answer) {
  struct Range {
    int quantity, kind;
    const char* name;
  };
  constexpr Range kRanges[] = {{KAVO_LOWER_LOW, KAVO_COLUMN, "senslblo"}, {KAVO_LOWER_HIGH, KAVO_COLUMN, "senslbhi"},
                               {KAVO_UPPER_LOW, KAVO_COLUMN, "sensublo"}, {KAVO_UPPER_HIGH, KAVO_COLUMN, "sensubhi"},
                               {KAVO_COST_LOW, KAVO_COLUMN, "sensobjlo"}, {KAVO_COST_HIGH, KAVO_COLUMN, "sensobjhi"},
                               {KAVO_SIDE_LOW, KAVO_ROW, "sensrhslo"},    {KAVO_SIDE_HIGH, KAVO_ROW, "sensrhshi"}};
  for (const Range& range : kRanges) {
    if (const Numbers& values = answer.values[static_cast<std::size_t>(range.quantity)])
      writeReals(text, range.kind, range.name, *values);
  }
}

void writePoolSizes(Text& text, const Results& results) {
  if (results.pool.empty()) return;
  for (const char* name : {"nsol", "npool"}) {
    writeHead(text, KAVO_MODEL, 1, name);
    (text << "0 ").number(results.pool.size()) << '\n';
  }
}

}  // namespace

const Numbers& ownOrFixed(const Results& results, kavo_quantity quantity) {
  const Numbers& own = results.values[quantity];
  return own || !results.fixed.finished ? own : results.fixed.values[quantity];
}

const Statuses& ownOrFixedBasis(const Results& results, int kind) {
  const Statuses& own = results.basis(kind);
  return own || !results.fixed.finished ? own : results.fixed.basis(kind);
}

void writeSuffixes(Text& text, const Model& model, const Results& results, std::size_t objective) {
  const kavo_finish& finish = results.finish;
  for (const int kind : {KAVO_COLUMN, KAVO_ROW}) writeStatuses(text, model, results, kind);
  if (const Numbers& costs = ownOrFixed(results, KAVO_REDUCED_COST)) writeReals(text, KAVO_COLUMN, "rc", *costs);
  writeRanges(text, results);
  writeAbout(text, model, objective, "bestbound", finish.bound);
  writeAbout(text, model, objective, "relmipgap", finish.gap);
  writeAbout(text, model, objective, "absmipgap", std::fabs(finish.objective - finish.bound));
  writeAbout(text, model, objective, "kappa", finish.condition);
  writeAbout(text, model, objective, "kappa_exact", finish.exact_condition);
  writePoolSizes(text, results);
  if (results.conflict) writeConflict(text, model, *results.conflict);
}

}  // namespace kavo::writer
