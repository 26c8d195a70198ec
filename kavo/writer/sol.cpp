#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "kavo/result/outcome.h"
#include "kavo/writer/file.h"
#include "kavo/writer/writer.h"

namespace kavo::writer {

namespace {

constexpr int kRealSuffix = 4;  // added to the kind of a suffix whose values are not whole

// The message ends at the first blank line and must not look like the block behind it.
void writeMessage(Text& text, std::string_view message) {
  while (!message.empty()) {
    const std::size_t end = std::min(message.find('\n'), message.size());
    std::string_view line = message.substr(0, end);
    message.remove_prefix(std::min(end + 1, message.size()));
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (line.find_first_not_of(" \t") == std::string_view::npos) continue;
    if (line.starts_with("Options")) text << ' ';
    text << line << '\n';
  }
  text << '\n';
}

// The options of the .nl file go back as they came. A second one of 3 says that a tolerance follows the counts, which
// the number of options tells too.
void writeHead(Text& text, const SolShape& shape, std::size_t duals, std::size_t values) {
  const std::vector<int> options = shape.options.empty() ? std::vector<int>{1, 1, 0} : shape.options;
  const bool tolerance = options.size() > 1 && options[1] == 3;
  text << "Options\n";
  text.number(options.size() + (tolerance ? 2 : 0)) << '\n';
  for (const int value : options) text.number(static_cast<double>(value)) << '\n';
  for (const std::size_t count : {shape.rows, duals, shape.columns, values}) text.number(count) << '\n';
  if (tolerance) text.number(shape.tolerance) << '\n';
}

void writeCode(Text& text, std::size_t objective, int code) {
  (text << "objno ").number(objective) << ' ';
  text.number(static_cast<double>(code)) << '\n';
}

void writeSuffixHead(Text& text, int kind, std::size_t count, std::string_view name) {
  text << "suffix ";
  text.number(static_cast<std::size_t>(kind)) << ' ';
  text.number(count) << ' ';
  text.number(name.size() + 1) << " 0 0\n" << name << '\n';
}

void writeSuffix(Text& text, int kind, std::string_view name, const std::vector<double>& values) {
  writeSuffixHead(text, kind | kRealSuffix, values.size(), name);
  for (std::size_t i = 0; i < values.size(); ++i) (text.number(i) << ' ').number(values[i]) << '\n';
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
};

void writeStatuses(Text& text, int kind, const std::vector<int>& basis, const Bounds& bounds) {
  writeSuffixHead(text, kind, basis.size(), "sstatus");
  for (std::size_t i = 0; i < basis.size(); ++i) {
    (text.number(i) << ' ').number(amplStatus(basis[i], bounds.lower[i] == bounds.upper[i])) << '\n';
  }
}

// A number about the solved objective, given to the objective and to the problem.
void writeAbout(Text& text, const Model& model, std::size_t objective, std::string_view name, double value) {
  if (std::isnan(value)) return;
  if (objective < model.objectives.size()) {
    writeSuffixHead(text, KAVO_OBJECTIVE | kRealSuffix, 1, name);
    (text.number(objective) << ' ').number(value) << '\n';
  }
  writeSuffix(text, KAVO_MODEL, name, {value});
}

void writeSuffixes(Text& text, const Model& model, const Results& results, std::size_t objective) {
  if (results.columnBasis)
    writeStatuses(text, KAVO_COLUMN, *results.columnBasis, {model.columns.lower, model.columns.upper});
  if (results.rowBasis) writeStatuses(text, KAVO_ROW, *results.rowBasis, {model.rows.lower, model.rows.upper});
  if (const auto& costs = results.values[KAVO_REDUCED_COST]) writeSuffix(text, KAVO_COLUMN, "rc", *costs);
  writeAbout(text, model, objective, "bestbound", results.finish.bound);
  writeAbout(text, model, objective, "relmipgap", results.finish.gap);
  writeAbout(text, model, objective, "absmipgap", std::fabs(results.finish.objective - results.finish.bound));
}

// The protocol has no word for an unknown number.
void writeValues(Text& text, const std::vector<double>& values) {
  for (const double value : values) text.number(std::isnan(value) ? 0 : value) << '\n';
}

std::size_t sizeOf(const Numbers& values) { return values ? values->size() : 0; }

SolShape shapeOf(const Model& model) {
  return {model.amplOptions, model.amplTolerance, model.rows.size(), model.columns.size()};
}

// The index of the objective that a .sol speaks of.
std::size_t objectiveOf(const Model& model, const SolHeader& header) {
  const auto chosen = static_cast<std::size_t>(std::max(header.objectiveNumber, 1) - 1);
  return chosen < model.objectives.size() ? chosen : 0;
}

struct Verdict {
  int code;
  const char* message;
};

// A point of the pool that is as good as the answer has been proven as much; of a worse one it is known only that it is
// feasible.
Verdict judge(const Results& results, const PoolPoint& point) {
  constexpr double kSame = 1e-9;
  const double best = results.finish.objective;
  const bool same = std::fabs(point.objective - best) <= kSame * std::max(1.0, std::fabs(best));
  const Outcome words = outcome(results);
  return same ? Verdict{words.solCode, words.message} : Verdict{100, "feasible solution"};
}

}  // namespace

void writeSol(const Model& model, const Results* results, const std::string& path, const SolHeader& header) {
  static const Results kNone;
  const Results& given = results ? *results : kNone;
  const auto &duals = given.values[KAVO_DUAL], &primal = given.values[KAVO_PRIMAL];
  const std::size_t objective = objectiveOf(model, header);
  writeFile(path, [&](Text& text) {
    writeMessage(text, header.message);
    writeHead(text, shapeOf(model), sizeOf(duals), sizeOf(primal));
    if (duals) writeValues(text, *duals);
    if (primal) writeValues(text, *primal);
    writeCode(text, objective, header.resultCode >= 0 ? header.resultCode : outcome(given).solCode);
    writeSuffixes(text, model, given, objective);
  });
}

void writePoolSol(const Model& model, const Results& results, std::size_t index, const std::string& path,
                  const SolHeader& header) {
  const PoolPoint& point = results.pool[index];
  const Verdict verdict = judge(results, point);
  writeFile(path, [&](Text& text) {
    std::string message(header.message);
    message += fmt::format("\nalternative solution {} of {}: {}; objective {}", index + 1, results.pool.size(),
                           verdict.message, point.objective);
    writeMessage(text, message);
    writeHead(text, shapeOf(model), 0, point.values.size());
    writeValues(text, point.values);
    writeCode(text, objectiveOf(model, header), verdict.code);
  });
}

void writeFailureSol(const SolShape& shape, const std::string& path, const SolHeader& header) {
  writeFile(path, [&](Text& text) {
    writeMessage(text, header.message);
    writeHead(text, shape, 0, 0);
    writeCode(text, 0, header.resultCode);
  });
}

}  // namespace kavo::writer
