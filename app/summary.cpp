#include "app/summary.h"

#include <fmt/format.h>

#include <cmath>
#include <iterator>
#include <numeric>

#include "app/checks.h"
#include "app/conflict.h"
#include "app/failure.h"
#include "app/words.h"

namespace app {

namespace {

constexpr int kDigits = 10;

std::string counted(double number, const char* one, const char* many) {
  return fmt::format("{} {}", number, number == 1 ? one : many);
}

std::string sentence(const kavo_outcome& outcome) {
  std::string line = outcome.message;
  if (!std::isnan(outcome.objective)) line += "; objective " + numberText(outcome.objective, kDigits);
  return line + "\n";
}

std::string headline(const kavo_outcome& outcome) {
  return fmt::format("grblink {}: {}", kavo_version(), sentence(outcome));
}

// A continuous model has neither nodes nor a gap, so a zero is not worth a line.
std::string work(const kavo_outcome& outcome) {
  std::string lines;
  if (outcome.iterations >= 0) lines += counted(outcome.iterations, "iteration", "iterations") + "\n";
  if (outcome.nodes > 0) lines += counted(outcome.nodes, "branching node", "branching nodes") + "\n";
  if (outcome.gap > 0) {
    lines += fmt::format("best bound {}, relative gap {:.3g}\n", numberText(outcome.bound, kDigits), outcome.gap);
  }
  return lines;
}

// What was asked for besides: explanations, several answers, condition numbers. A note tells of a relaxation.
std::string extras(const Session& session, const kavo_outcome& outcome) {
  std::string lines;
  if (const auto conflict = conflictOf(session)) lines += "conflict: " + describe(*conflict) + "\n";
  const Session::Values objectives = session.objectiveValues();
  for (std::size_t i = 0; objectives.count > 1 && i < objectives.count; ++i) {
    lines +=
        fmt::format("objective {}: {}\n", session.name(KAVO_OBJECTIVE, i), numberText(objectives.first[i], kDigits));
  }
  if (const std::size_t points = session.poolSize(); points > 0) {
    lines += counted(static_cast<double>(points), "point", "points") + " in the solution pool\n";
  }
  if (!std::isnan(outcome.condition)) lines += fmt::format("condition number about {:.3g}\n", outcome.condition);
  if (!std::isnan(outcome.exact_condition)) {
    lines += fmt::format("exact condition number {:.3g}\n", outcome.exact_condition);
  }
  kavo_outcome fixed;
  if (kavo_get_fixed_outcome(session.model(), &fixed) == KAVO_OK) lines += "fixed model: " + sentence(fixed);
  return lines;
}

bool hasDiscreteVariables(const Session& session) {
  kavo_statistics statistics;
  check(kavo_get_statistics(session.model(), &statistics));
  return statistics.columns[KAVO_CONTINUOUS] <
         std::accumulate(std::begin(statistics.columns), std::end(statistics.columns), std::size_t{0});
}

// For people only: a program knows that a search gives none. Of other models the link tells the reason in a note.
std::string absentDuals(const Session& session, const kavo_outcome& outcome) {
  const bool hasPoint = session.values(KAVO_PRIMAL).first != nullptr;
  const bool hasDuals =
      session.values(KAVO_DUAL).first != nullptr || session.values(KAVO_DUAL + KAVO_OF_FIXED).first != nullptr;
  if (!hasPoint || hasDuals || !std::isnan(outcome.relaxation) || !hasDiscreteVariables(session)) return {};
  const char* const reason = "no duals: the model has integer or semi-continuous variables";
  const bool mayHelp = session.given("solvefixed").empty() && session.given("multobj").empty();
  return fmt::format("{}{}\n", reason, mayHelp ? " (solvefixed=1 gives those of the fixed model)" : "");
}

std::string warnings(const Session& session) {
  std::string lines;
  for (const Check& row : kChecks) {
    const auto found = session.violation(row.check);
    if (!found || found->element < 0 || found->value <= row.tolerance) continue;
    const std::string name = session.name(row.kind, static_cast<std::size_t>(found->element));
    lines += fmt::format("warning: largest {} violation {:.3g} at {} {} (tolerance {:g})\n", row.what, found->value,
                         row.element, name, row.tolerance);
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
  return headline(outcome) + work(outcome) + extras(session, outcome) + warnings(session);
}

std::string summary(const Session& session) {
  const kavo_outcome outcome = session.outcome();
  return headline(outcome) + size(session) + work(outcome) + extras(session, outcome) + absentDuals(session, outcome) +
         fmt::format("{:.2f} seconds, {}\n", outcome.seconds, session.solverText()) + warnings(session);
}

std::string poolMessage(const Session& session, std::size_t index) {
  return fmt::format("grblink {}: point {} of {} in the solution pool; objective {}\n", kavo_version(), index + 1,
                     session.poolSize(), numberText(session.poolObjective(index), kDigits));
}

std::string failureMessage(const std::string& message) {
  return fmt::format("grblink {}: error: {}\n", kavo_version(), message);
}

}  // namespace app
