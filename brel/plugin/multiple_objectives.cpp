#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <vector>

#include "brel/host.h"
#include "brel/load/objective_block.h"
#include "brel/plugin/plugins.h"
#include "tav/opt/support_exception.h"
#include "tav/util/exception.h"
#include "tav/util/number.h"

namespace brel::plugin {
namespace {

using Attribute = settings::PluginAttribute;

void note(trpRec* host, const std::string& line) { kavo_link_note(host, line.c_str()); }

int chosenObjective(const trpRec* host) {
  int number = 0;
  checkHost(kavo_link_objective_number(host, &number));
  return number;
}

std::string titleOf(const kavo_objective& objective, std::size_t k) {
  return objective.name != nullptr && *objective.name != '\0' ? fmt::format("'{}'", objective.name)
                                                              : fmt::format("{}", k + 1);
}

void requireLinear(const trpRec* host, std::size_t count) {
  for (std::size_t k = 0; k < count; ++k) {
    kavo_objective objective{};
    checkHost(kavo_link_objective(host, k, &objective));
    if (objective.expression < 0 && objective.quadratic < 0) continue;
    throw tav::opt::SupportException(
        fmt::format("multobj: objective {} is {}; several objectives are only supported when all of them are linear",
                    titleOf(objective, k), objective.expression < 0 ? "quadratic" : "nonlinear"),
        tav::util::SourceLocation::here());
  }
}

// The odd modes of a relaxation keep what the cheapest one costs by a row of their own, which the solver does for one
// objective only.
void requireSolvable(const settings::Given& given) {
  const bool isRelaxed = settings::wholeNumber(given, "feasopt").value_or(0) == 1;
  const int mode = settings::wholeNumber(given, "feasoptmode").value_or(0);
  if (!isRelaxed || mode % 2 == 0) return;
  throw tav::UserException(
      fmt::format("feasoptmode {} improves one objective after the relaxation and multobj 1 solves several; take the "
                  "mode {}, or leave multobj out",
                  mode, mode - 1));
}

double toleranceOf(std::string_view heading, std::string_view word) {
  const auto value = tav::util::toDouble(word);
  if (value && *value >= 0 && std::isfinite(*value)) return *value;
  throw tav::UserException(fmt::format("{}'{}' is no tolerance; it must be a number of 0 or more", heading, word));
}

// One number per objective, with commas or blanks between them; none for the empty text. An error begins with the
// heading.
std::vector<double> tolerances(std::string_view heading, std::string_view list, std::size_t count) {
  constexpr std::string_view kSeparators = ", \t";
  std::vector<double> values;
  std::size_t begin = 0;
  while ((begin = list.find_first_not_of(kSeparators, begin)) != std::string_view::npos) {
    const std::size_t end = std::min(list.find_first_of(kSeparators, begin), list.size());
    values.push_back(toleranceOf(heading, list.substr(begin, end - begin)));
    begin = end;
  }
  if (values.empty() || values.size() == count) return values;
  throw tav::UserException(fmt::format("{}{} number{} given for {} objectives; there must be one for each", heading,
                                       values.size(), values.size() == 1 ? " is" : "s are", count));
}

// Gives the solver every objective of the model, or tells that it gets one.
class MultipleObjectives : public AbstractPlugin {
 public:
  void prepare(Solve& solve) override {
    const std::string absTol = solve.values.text(Attribute::objectiveAbsTol);
    const std::string relTol = solve.values.text(Attribute::objectiveRelTol);
    const std::size_t count = load::objectiveCount(solve.host);
    const int chosen = chosenObjective(solve.host);
    if (solve.values.whole(Attribute::allObjectives) == 0) {
      if (!absTol.empty() || !relTol.empty())
        note(solve.host, "objnabstol and objnreltol have no effect without multobj 1");
      if (count > 1 && chosen > 0) {
        note(solve.host,
             fmt::format("the model has {} objectives, of which number {} is solved (multobj 1: all)", count, chosen));
      }
      return;
    }
    if (count <= 1 || chosen == 0)
      return note(solve.host, "multobj 1 has no effect: there are not several objectives to solve");
    if (chosen > 1) {
      throw tav::UserException(
          fmt::format("multobj 1 solves all objectives and objno {} one of them; give one or the other", chosen));
    }
    requireLinear(solve.host, count);
    requireSolvable(solve.given);
    solve.choices.objectiveAbsTol = tolerances(solve.values.heading(Attribute::objectiveAbsTol), absTol, count);
    solve.choices.objectiveRelTol = tolerances(solve.values.heading(Attribute::objectiveRelTol), relTol, count);
    solve.choices.allObjectives = true;
  }
};

}  // namespace

std::unique_ptr<AbstractPlugin> multipleObjectives() { return std::make_unique<MultipleObjectives>(); }

}  // namespace brel::plugin
