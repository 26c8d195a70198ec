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
struct Options {
  std::vector<int> values;
  bool tolerance;

  explicit Options(const Model& model) : values(model.amplOptions) {
    if (values.empty()) values = {1, 1, 0};
    tolerance = values.size() > 1 && values[1] == 3;
  }
};

void writeHead(Text& text, const Model& model, std::size_t duals, std::size_t values) {
  const Options options(model);
  text << "Options\n";
  text.number(options.values.size() + (options.tolerance ? 2 : 0)) << '\n';
  for (const int value : options.values) text.number(static_cast<double>(value)) << '\n';
  for (const std::size_t count : {model.rows.size(), duals, model.columns.size(), values}) text.number(count) << '\n';
  if (options.tolerance) text.number(model.amplTolerance) << '\n';
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

void writeValues(Text& text, const std::optional<std::vector<double>>& values) {
  if (!values) return;
  for (const double value : *values) text.number(value) << '\n';
}

std::size_t sizeOf(const std::optional<std::vector<double>>& values) { return values ? values->size() : 0; }

}  // namespace

void writeSol(const Model& model, const Results* results, const std::string& path, const SolHeader& header) {
  static const Results kNone;  // not run
  const Results& given = results ? *results : kNone;
  const auto &duals = given.values[KAVO_DUAL], &primal = given.values[KAVO_PRIMAL];
  const auto objective = static_cast<std::size_t>(std::max(header.objectiveNumber, 1) - 1);
  const int code = header.resultCode >= 0 ? header.resultCode : outcome(given).solCode;
  writeFile(path, [&](Text& text) {
    writeMessage(text, header.message);
    writeHead(text, model, sizeOf(duals), sizeOf(primal));
    writeValues(text, duals);
    writeValues(text, primal);
    (text << "objno ").number(objective) << ' ';
    text.number(static_cast<double>(code)) << '\n';
    if (results != nullptr) writeSuffixes(text, model, given, objective);
  });
}

}  // namespace kavo::writer
