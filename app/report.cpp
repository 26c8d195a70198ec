#include "app/report.h"

#include <fmt/format.h>

#include <cmath>

#include "app/failure.h"

namespace app {

namespace {

constexpr double kTolerance = 1e-6;  // violations up to this size are not worth a line

std::string counted(double number, const char* one, const char* many) {
  return fmt::format("{} {}", number, number == 1 ? one : many);
}

std::string headline(const kavo_outcome& outcome) {
  std::string line = fmt::format("grblink {}: {}", kavo_version(), outcome.message);
  if (!std::isnan(outcome.objective)) line += fmt::format("; objective {:.10g}", outcome.objective);
  return line + "\n";
}

// A continuous model has neither nodes nor a gap, so a zero is not worth a line.
std::string work(const kavo_outcome& outcome) {
  std::string lines;
  if (outcome.iterations >= 0) lines += counted(outcome.iterations, "iteration", "iterations") + "\n";
  if (outcome.nodes > 0) lines += counted(outcome.nodes, "branching node", "branching nodes") + "\n";
  if (outcome.gap > 0) lines += fmt::format("best bound {:.10g}, relative gap {:.3g}\n", outcome.bound, outcome.gap);
  return lines;
}

std::string warnings(const Session& session) {
  struct Row {
    int check, kind;
    const char *what, *element;
  };
  constexpr Row kRows[] = {{KAVO_CHECK_ROW, KAVO_ROW, "row", "row"},
                           {KAVO_CHECK_BOUND, KAVO_COLUMN, "bound", "variable"},
                           {KAVO_CHECK_INTEGRALITY, KAVO_COLUMN, "integrality", "variable"},
                           {KAVO_CHECK_LOGICAL, KAVO_LOGICAL, "logical", "constraint"},
                           {KAVO_CHECK_SET, KAVO_SET, "ordered set", "set"}};
  std::string lines;
  for (const Row& row : kRows) {
    const auto found = session.violation(row.check);
    if (!found || found->element < 0 || found->value <= kTolerance) continue;
    const std::string name = session.name(row.kind, static_cast<std::size_t>(found->element));
    lines += fmt::format("warning: largest {} violation {:.3g} at {} {}\n", row.what, found->value, row.element, name);
  }
  for (const std::string& note : session.notes()) lines += "note: " + oneLine(note) + "\n";
  return lines;
}

std::string size(const Session& session) {
  std::size_t columns = 0, rows = 0, nonzeros = 0;
  check(kavo_counts(session.model(), &columns, &rows, &nonzeros, nullptr));
  return fmt::format("{} rows, {} variables, {} nonzeros\n", rows, columns, nonzeros);
}

}  // namespace

std::string solMessage(const Session& session) {
  const kavo_outcome outcome = session.outcome();
  return headline(outcome) + work(outcome) + warnings(session);
}

std::string summary(const Session& session) {
  const kavo_outcome outcome = session.outcome();
  return headline(outcome) + size(session) + work(outcome) +
         fmt::format("{:.2f} seconds, {}\n", outcome.seconds, session.solverText()) + warnings(session);
}

std::string table(const Session& session, int quantity) {
  const Session::Values values = session.values(quantity);
  const bool columns = quantity <= KAVO_REDUCED_COST;
  if (values.first == nullptr) return {};
  std::string lines = columns ? "\nvariable  value\n" : "\nrow  dual\n";
  for (std::size_t i = 0; i < values.count; ++i) {
    lines += fmt::format("{}  {}\n", session.name(columns ? KAVO_COLUMN : KAVO_ROW, i), values.first[i]);
  }
  return lines;
}

std::string failureMessage(const std::string& message) {
  return fmt::format("grblink {}: error: {}\n", kavo_version(), message);
}

}  // namespace app
