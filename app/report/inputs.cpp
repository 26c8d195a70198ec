#include "app/report/inputs.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "app/assignments.h"
#include "app/failure.h"
#include "app/gurobi_files.h"
#include "app/report/html.h"
#include "app/words.h"

namespace app::report {

namespace {

constexpr double kWideSpan = 1e9;  // of numbers of one kind, from where on solvers are in trouble
constexpr std::size_t kMostSettings = 500;

std::string sizes(const kavo_statistics& model) {
  Table table({{"part", false}, {"number", true}});
  const auto line = [&](const char* what, std::size_t count, bool always = false) {
    if (count > 0 || always) table.add({what, fmt::format("{}", count)});
  };
  std::size_t columns = 0;
  for (const std::size_t count : model.columns) columns += count;
  line("variables", columns, true);
  line("continuous", columns == model.columns[KAVO_CONTINUOUS] ? 0 : model.columns[KAVO_CONTINUOUS]);
  line("binary", model.columns[KAVO_BINARY]);
  line("integer", model.columns[KAVO_INTEGER]);
  line("semi-continuous", model.columns[KAVO_SEMICONTINUOUS]);
  line("semi-integer", model.columns[KAVO_SEMIINTEGER]);
  line("rows", model.rows, true);
  line("linear equalities", model.equalities);
  line("linear inequalities", model.inequalities);
  line("linear with two sides", model.ranges);
  line("linear without a side", model.free_rows);
  line("quadratic rows", model.quadratic_rows);
  line("nonlinear rows", model.nonlinear_rows);
  line("switched rows", model.switched_rows);
  line("logical constraints", model.logical);
  line("ordered sets of type 1", model.sets1);
  line("ordered sets of type 2", model.sets2);
  line("objectives", model.objectives, true);
  line("linear terms of rows", model.nonzeros, true);
  line("quadratic terms", model.quadratic_terms);
  line("nodes of expressions", model.nodes);
  return table.text();
}

std::string magnitudes(const kavo_statistics& model) {
  Table table({{"absolute values of", false}, {"smallest", true}, {"largest", true}});
  std::string wide;
  const std::pair<const char*, kavo_range> kinds[] = {{"coefficients of rows", model.coefficients},
                                                      {"objective coefficients", model.objective},
                                                      {"bounds", model.bounds},
                                                      {"sides of rows", model.sides}};
  for (const auto& [what, range] : kinds) {
    if (range.largest == 0) continue;
    table.add({what, fmt::format("{:.4g}", range.smallest), fmt::format("{:.4g}", range.largest)});
    if (range.largest > kWideSpan * range.smallest) wide += (wide.empty() ? "" : ", ") + std::string(what);
  }
  if (table.empty()) return {};
  if (wide.empty()) return table.text();
  return table.text() + "<p class=\"warn\">Numbers of one kind span more than 10<sup>9</sup>: " + wide +
         ". Tolerances may not mean what they seem to.</p>\n";
}

struct Setting {
  std::string name, value, place;
};

std::string placeOf(const std::string& source, int line) {
  return line > 0 ? fmt::format("{}, line {}", source, line) : source;
}

// The last of each name, in the order in which the names came first; a question (name=?) is none. A file of parameters
// is read after all others.
std::vector<Setting> inForce(const Session& session) {
  std::vector<Setting> settings;
  const auto take = [&](const Setting& given) {
    if (given.value == "?") return;
    const auto same = std::find_if(settings.begin(), settings.end(),
                                   [&](const Setting& other) { return isSameWord(other.name, given.name); });
    same == settings.end() ? settings.push_back(given) : void(*same = given);
  };
  kavo_setting given{};
  for (const auto at : {kavo_own_setting_at, kavo_setting_at}) {
    for (std::size_t i = 0; at(session.model(), i, &given) == KAVO_OK && given.name != nullptr; ++i) {
      take({given.name, given.value, placeOf(given.source, given.line)});
    }
  }
  const std::string parameters = session.given("readparams");
  for (const ParameterLine& line : parameterLines(parameters)) {
    take({line.name, line.value, placeOf(parameters, line.number)});
  }
  return settings;
}

}  // namespace

std::string statistics(const Session& session) {
  kavo_statistics model{};
  check(kavo_get_statistics(session.model(), &model));
  return "<div class=\"pair\">\n<div>" + sizes(model) + "</div>\n<div>" + magnitudes(model) + "</div>\n</div>\n";
}

std::string settings(const Session& session) {
  const std::vector<Setting> given = inForce(session);
  if (given.empty()) return "<p>None was given: everything has its default.</p>\n";
  Table table({{"name", false}, {"value", false}, {"given by", false}});
  const std::size_t shown = std::min(given.size(), kMostSettings);
  for (std::size_t i = 0; i < shown; ++i) {
    const Setting& setting = given[i];
    table.add({setting.name, namesSecret(setting.name) ? "***" : setting.value, setting.place});
  }
  return table.text() + cutLine(given.size(), shown, "settings");
}

}  // namespace app::report
