#include "app/report/results.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "app/checks.h"
#include "app/conflict.h"
#include "app/failure.h"
#include "app/report/html.h"

namespace app::report {

namespace {

constexpr std::size_t kMostElements = 200, kMostMembers = 500, kMostPoints = 100, kMostNotes = 100;
constexpr std::size_t kMostOpen = 60;  // a longer table is folded until it is asked for

// The colour of the headline: what was asked for, something of use, or nothing.
const char* gradeOf(const kavo_outcome& outcome) {
  if (outcome.sol_code < 100) return "good";
  return std::isnan(outcome.objective) ? "bad" : "fair";
}

std::string percent(double gap) { return std::isnan(gap) ? "" : fmt::format("{:.4g} %", 100 * gap); }

std::string largestViolation(const Session& session) {
  double largest = -1;
  std::string where;
  for (const Check& check : kChecks) {
    const auto found = session.violation(check.check);
    if (!found || found->value <= largest) continue;
    largest = found->value;
    if (found->element >= 0) {
      where =
          fmt::format(" ({} {})", check.element, session.name(check.kind, static_cast<std::size_t>(found->element)));
    }
  }
  return largest < 0 ? "" : fmt::format("{:.3g}{}", largest, largest > 0 ? where : "");
}

const char* basisWord(int status) {
  constexpr const char* kWords[] = {"", "lower", "upper", "basic", "superbasic"};
  return status >= 0 && status <= KAVO_SUPERBASIC ? kWords[status] : "";
}

// A table of the elements of a kind with the quantities that the solve has given.
std::string elements(const Session& session, int kind, const char* what,
                     const std::vector<std::pair<const char*, int>>& quantities) {
  std::vector<Table::Column> columns{{"name", false}};
  std::vector<Session::Values> values;
  std::size_t count = 0;
  for (const auto& [title, quantity] : quantities) {
    const Session::Values given = session.values(quantity);
    if (given.first == nullptr) continue;
    values.push_back(given);
    columns.push_back({title, true});
    count = given.count;
  }
  if (count == 0) return {};
  const int* basis = nullptr;
  std::size_t basisCount = 0;
  kavo_result_basis(session.model(), kind, &basis, &basisCount);
  if (basis != nullptr) columns.push_back({"basis", false});
  Table table(columns);
  const std::size_t shown = std::min(count, kMostElements);
  for (std::size_t i = 0; i < shown; ++i) {
    std::vector<std::string> cells{session.name(kind, i)};
    for (const Session::Values& given : values) cells.push_back(numberText(given.first[i]));
    if (basis != nullptr) cells.emplace_back(basisWord(basis[i]));
    table.add(cells);
  }
  if (count <= kMostOpen) return table.text();
  return fmt::format("<details><summary>{} {}</summary>\n{}{}</details>\n", count, what, table.text(),
                     cutLine(count, shown, what));
}

}  // namespace

std::string outcome(const Session& session) {
  const kavo_outcome outcome = session.outcome();
  const std::pair<const char*, std::string> facts[] = {{"objective", numberText(outcome.objective)},
                                                       {"best bound", numberText(outcome.bound)},
                                                       {"relative gap", percent(outcome.gap)},
                                                       {"cost of the relaxation", numberText(outcome.relaxation)},
                                                       {"seconds", fmt::format("{:.2f}", outcome.seconds)},
                                                       {"branching nodes", numberText(outcome.nodes)},
                                                       {"iterations", numberText(outcome.iterations)},
                                                       {"points held", numberText(outcome.solutions)},
                                                       {"largest violation", largestViolation(session)},
                                                       {"condition number, estimated", numberText(outcome.condition)},
                                                       {"condition number", numberText(outcome.exact_condition)}};
  std::string list;
  for (const auto& [name, value] : facts) {
    if (!value.empty()) list += fmt::format("<div><dt>{}</dt><dd>{}</dd></div>\n", name, escaped(value));
  }
  std::string text =
      fmt::format("<p class=\"outcome {}\">{}</p>\n<dl>\n{}</dl>\n", gradeOf(outcome), escaped(outcome.message), list);
  kavo_outcome fixed;
  if (kavo_get_fixed_outcome(session.model(), &fixed) == KAVO_OK) {
    text += fmt::format("<p>Fixed model: {}, objective {}.</p>\n", escaped(fixed.message), numberText(fixed.objective));
  }
  return text;
}

std::string notes(const Session& session) {
  std::string items;
  for (const Check& check : kChecks) {
    const auto found = session.violation(check.check);
    if (!found || found->element < 0 || found->value <= check.tolerance) continue;
    items += fmt::format("<li class=\"warn\">Largest {} violation {:.3g} at {} {}</li>\n", check.what, found->value,
                         check.element, escaped(session.name(check.kind, static_cast<std::size_t>(found->element))));
  }
  const std::vector<std::string> all = session.notes();
  const std::size_t shown = std::min(all.size(), kMostNotes);
  for (std::size_t i = 0; i < shown; ++i) items += "<li>" + escaped(oneLine(all[i])) + "</li>\n";
  return items.empty() ? items : "<ul>\n" + items + "</ul>\n" + cutLine(all.size(), shown, "notes");
}

std::string conflict(const Session& session) {
  const auto conflict = conflictOf(session);
  if (!conflict) return {};
  Table table({{"name", false}, {"what contradicts", false}});
  const std::size_t shown = std::min(conflict->members.size(), kMostMembers);
  for (std::size_t i = 0; i < shown; ++i) {
    const Conflict::Member& member = conflict->members[i];
    table.add({session.name(member.kind, member.index), describe(member)});
  }
  const std::string cut = cutLine(conflict->members.size(), shown, "members");
  return "<p>" + escaped(describe(*conflict)) + ".</p>\n" + (table.empty() ? "" : table.text()) + cut;
}

std::string answers(const Session& session) {
  std::string text;
  const Session::Values objectives = session.objectiveValues();
  Table values({{"objective", false}, {"value", true}});
  for (std::size_t i = 0; objectives.count > 1 && i < std::min(objectives.count, kMostPoints); ++i) {
    values.add({session.name(KAVO_OBJECTIVE, i), numberText(objectives.first[i])});
  }
  if (!values.empty()) text += values.text() + cutLine(objectives.count, kMostPoints, "objectives");
  Table pool({{"point of the pool", false}, {"objective", true}});
  const std::size_t count = session.poolSize(), shown = std::min(count, kMostPoints);
  for (std::size_t i = 0; i < shown; ++i) {
    pool.add({fmt::format("{}", i + 1), numberText(session.poolObjective(i))});
  }
  return pool.empty() ? text : text + pool.text() + cutLine(count, shown, "points");
}

std::string variables(const Session& session) {
  return elements(session, KAVO_COLUMN, "variables",
                  {{"value", KAVO_PRIMAL},
                   {"reduced cost", KAVO_REDUCED_COST},
                   {"cost from", KAVO_COST_LOW},
                   {"to", KAVO_COST_HIGH},
                   {"lower from", KAVO_LOWER_LOW},
                   {"to", KAVO_LOWER_HIGH},
                   {"upper from", KAVO_UPPER_LOW},
                   {"to", KAVO_UPPER_HIGH}});
}

std::string rows(const Session& session) {
  return elements(session, KAVO_ROW, "rows",
                  {{"activity", KAVO_ACTIVITY},
                   {"slack", KAVO_SLACK},
                   {"dual", KAVO_DUAL},
                   {"side from", KAVO_SIDE_LOW},
                   {"to", KAVO_SIDE_HIGH}});
}

}  // namespace app::report
