#include "brel/settings/plugin_settings.h"

#include <fmt/core.h>

#include <algorithm>
#include <iterator>
#include <optional>

#include "tav/attr/lib/range_info.h"

namespace brel::settings {
namespace {

using tav::attr::AbstractBaseInfo;
using tav::attr::ValueType;

constexpr double kNo = 0, kYes = 1;  // of a switch
constexpr double kMany = 2000000000, kEver = 1e100;

struct Row {
  Plugin plugin;
  ValueType type;
  double initial, upper;  // of numbers, which begin at 0
  const char* name;       // unless the link gives another; "" for attributes that every link names
  const char* help;       // null: the attribute has no meaning
};

constexpr Row reserved(Plugin plugin) { return {plugin, ValueType::kString, 0, 0, "", nullptr}; }

// By the number of the attribute.
constexpr Row kRows[] = {
    {Plugin::dumpSolutions, ValueType::kString, 0, 0, "",
     "Beginning of file names: each new incumbent of a MIP is written as it is found, to this name with 1.sol, 2.sol "
     "and so on behind it."},
    {Plugin::fixedSolve, ValueType::kInt, kNo, 1, "",
     "1 solves a MIP once more with its integer variables fixed at their values, which gives duals, reduced costs and "
     "a basis."},
    {Plugin::fixedSolve, ValueType::kString, 0, 0, "", "An option file for the solve of the fixed model."},
    reserved(Plugin::writeBack),
    {Plugin::multipleObjectives, ValueType::kInt, kNo, 1, "",
     "1 gives all objectives of the model to the solver, 0 only one."},
    {Plugin::multipleObjectives, ValueType::kString, 0, 0, "",
     "By how much later objectives may worsen each objective: one number per objective."},
    {Plugin::multipleObjectives, ValueType::kString, 0, 0, "",
     "The same as objnabstol in proportion to the objective's value."},
    {Plugin::ranges, ValueType::kInt, kNo, 1, "ranges",
     "1 tells how far each objective coefficient, bound and side of a continuous linear model may move before the "
     "optimal basis changes."},
    reserved(Plugin::ranges),
    reserved(Plugin::ranges),
    {Plugin::multipleStarts, ValueType::kString, 0, 0, "",
     "A file that lists files with start points for a MIP, each in the form in which solutions are written."},
    reserved(Plugin::multipleStarts),
    {Plugin::rangeRestart, ValueType::kString, 0, 0, "",
     "A file for the results with their sensitivity ranges, from which a later run reads them back (rngread)."},
    {Plugin::rangeRestart, ValueType::kString, 0, 0, "rngread",
     "A file that an earlier run has written by rngrestart for this model: its results are read back and nothing is "
     "solved."},
    {Plugin::pool, ValueType::kInt, kNo, 1, "pool",
     "1 returns all points that the solver has found and kept, not the best one alone. So does a PoolSearchMode that "
     "is not 0."},
    reserved(Plugin::pool),
    {Plugin::statistics, ValueType::kInt, kNo, 1, "statistics",
     "1 tells before the solve what the model consists of and how far its numbers lie apart."},
    {Plugin::trace, ValueType::kString, 0, 0, "",
     "A file for the trace of a MIP search: seconds, nodes, incumbent, bound and gap as comma-separated values."},
    {Plugin::trace, ValueType::kInt, 100, kMany, "", "A line of the trace every so many nodes; 0: not by nodes."},
    {Plugin::trace, ValueType::kDouble, 5, kEver, "",
     "A line of the trace every so many seconds, at most ten a second; 0: not by time."},
    {Plugin::trace, ValueType::kInt, kYes, 1, "", "1 adds a line to the trace at each new incumbent."},
    {Plugin::stopExpression, ValueType::kString, 0, 0, "",
     "An expression over time, nodes, incumbent, bound, gap and solutions that stops the search as soon as it is "
     "true."},
    {Plugin::stopExpression, ValueType::kInt, 100, kMany, "",
     "The stop expression is checked every so many nodes; 0: not by nodes."},
    {Plugin::stopExpression, ValueType::kDouble, 1, kEver, "",
     "The stop expression is checked every so many seconds, at most ten times a second; 0: not by time."},
    {Plugin::stopExpression, ValueType::kDouble, 0, kEver, "",
     "The stop expression is checked at each incumbent that is better by more than this than the last one at which it "
     "was."},
    {Plugin::stopExpression, ValueType::kInt, kNo, 2, "",
     "What the log tells of the stop expression: 0 only that it stopped the search, 1 each check, 2 also its values."},
};

std::shared_ptr<const AbstractBaseInfo> infoOf(const Row& row, const std::string& name) {
  namespace lib = tav::attr::lib;
  const std::string help =
      row.help != nullptr ? row.help : fmt::format("Reserved for plug-in {}.", static_cast<int>(row.plugin));
  switch (row.type) {
    case ValueType::kInt:
      return std::make_shared<lib::RangeInfo<int>>(name, 1, true, static_cast<int>(row.initial), 0,
                                                   static_cast<int>(row.upper), std::nullopt, help);
    case ValueType::kDouble:
      return std::make_shared<lib::RangeInfo<double>>(name, 1, true, row.initial, 0.0, row.upper, std::nullopt, help);
    default:
      return std::make_shared<lib::Info<std::string>>(name, 1, true, std::nullopt, std::nullopt, help);
  }
}

std::string nameOf(const Row& row, int number, const LinkDef& definition) {
  const auto named = definition.names().find(PluginAttrib{number});
  if (named != definition.names().end()) return named->second;
  return *row.name != '\0' ? row.name : fmt::format("plugin-attribute-{}", number);
}

}  // namespace

std::vector<PluginSetting> pluginSettings(const LinkDef& definition) {
  const auto& enabled = definition.enabled();
  std::vector<PluginSetting> settings;
  for (int number = 0; number < static_cast<int>(std::size(kRows)); ++number) {
    const Row& row = kRows[number];
    if (std::find(enabled.begin(), enabled.end(), row.plugin) == enabled.end()) continue;
    settings.push_back(
        {PluginAttrib{number}, row.plugin, row.help != nullptr, infoOf(row, nameOf(row, number, definition))});
  }
  return settings;
}

}  // namespace brel::settings
