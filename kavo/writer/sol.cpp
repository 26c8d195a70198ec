#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "kavo/result/outcome.h"
#include "kavo/writer/file.h"
#include "kavo/writer/sol_suffixes.h"
#include "kavo/writer/writer.h"

namespace kavo::writer {

namespace {

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
// feasible. Where several objectives were solved, of which no bound is known, the first says too little.
Verdict judge(const Model& model, const Results& results, const PoolPoint& point) {
  constexpr double kSame = 1e-9;
  const double best = results.finish.objective;
  const bool wereSeveral = model.objectives.size() > 1 && std::isnan(results.finish.bound);
  const bool saysAll = !wereSeveral || point.values == results.values[KAVO_PRIMAL];
  const bool same = saysAll && std::fabs(point.objective - best) <= kSame * std::max(1.0, std::fabs(best));
  const Outcome words = outcome(results);
  return same ? Verdict{words.solCode, words.message} : Verdict{100, "feasible solution"};
}

}  // namespace

void writeSol(const Model& model, const Results* results, const std::string& path, const SolHeader& header) {
  static const Results kNone;
  const Results& given = results ? *results : kNone;
  const Numbers &duals = ownOrFixed(given, KAVO_DUAL), &primal = given.values[KAVO_PRIMAL];
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
  const Verdict verdict = judge(model, results, point);
  writeFile(path, [&](Text& text) {
    std::string message(header.message);
    message += fmt::format("\nalternative solution {} of {}: {}; objective {}", index + 1, results.pool.size(),
                           verdict.message, point.objective == 0 ? 0 : point.objective);
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
