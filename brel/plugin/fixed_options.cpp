#include "brel/plugin/fixed_options.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>

#include "brel/host.h"
#include "tav/opt/solver_services.h"
#include "tav/util/exception.h"

namespace brel::plugin {
namespace {

// They stand for another solve, or belong to that of the model that is not fixed.
constexpr std::array<std::string_view, 6> kUnset{"readparams", "writeprob", "writeparams", "feasopt", "iis", "tuning"};

// Of the search too, but the fixed model may have one of its own.
constexpr std::string_view kResultFile = "ResultFile";

bool isUnset(const settings::Row& row) { return std::find(kUnset.begin(), kUnset.end(), row.name()) != kUnset.end(); }

struct Free {
  void operator()(trpRec* model) const { kavo_free(&model); }
};
using Model = std::unique_ptr<trpRec, Free>;

// An empty model with the settings of an option file.
Model settingsOf(const std::string& file) {
  trpRec* made = nullptr;
  checkHost(kavo_create(&made));
  Model model(made);
  if (kavo_read_options(made, file.c_str()) != KAVO_OK) throw tav::UserException(kavo_last_error());
  return model;
}

bool isEarly(const settings::Row& row, const tav::opt::AbstractSolver& solver) {
  const auto* services = dynamic_cast<const tav::opt::AbstractSolverServices*>(&solver);
  return services != nullptr && services->isSetBeforeSetup(row.key);
}

void requireMeaning(const kavo_setting& setting, const settings::Table& table, const tav::opt::AbstractSolver& solver) {
  const settings::Row* row = table.find(setting.name);
  if (row == nullptr) return;  // refused or passed over by the check of all settings
  const bool isSolvers = row->owner == settings::Owner::solver;
  if (isSolvers && !isUnset(*row) && !isEarly(*row, solver) && std::string_view(setting.value) != "?") return;
  throw tav::UserException(fmt::format("{}, line {}: {} cannot be set for the solve of the fixed model", setting.source,
                                       setting.line, row->name()));
}

settings::Given checked(const std::string& file, const settings::Table& table, tav::opt::AbstractSolver& solver) {
  if (file.empty()) return {};
  const Model model = settingsOf(file);
  const kavo_setting* first = nullptr;
  std::size_t count = 0;
  checkHost(kavo_link_settings(model.get(), &first, &count));
  for (std::size_t k = 0; k < count; ++k) requireMeaning(first[k], table, solver);
  return settings::check(model.get(), table, solver);
}

// Of a text. A file of parameters may have set it.
bool isInForce(std::string_view name, const settings::Table& table, tav::opt::AbstractSolver& solver) {
  const settings::Row* row = table.find(name);
  if (row == nullptr) return false;
  const auto text = solver.makeModelAttributes(solver.shortName(), {})->get(row->key).as<std::string>();
  return text.solutionCount() > 0 && !text.get().empty();
}

}  // namespace

FixedOptions::FixedOptions(const std::string& file, const settings::Table& table, tav::opt::AbstractSolver& solver)
    : table_(table), own_(checked(file, table, solver)) {}

void FixedOptions::enter(const settings::Given& run, tav::opt::AbstractSolver& solver) const {
  std::vector<std::string> unset;
  for (const settings::Checked& setting : run.settings) {
    if (isUnset(*setting.row)) unset.push_back(setting.row->name());
  }
  if (isInForce(kResultFile, table_, solver)) unset.emplace_back(kResultFile);
  settings::withdraw(unset, {}, table_, solver);
  settings::apply(own_.settings, solver);
}

void FixedOptions::leave(const settings::Given& run, tav::opt::AbstractSolver& solver) const {
  std::vector<std::string> moved;
  for (const settings::Checked& setting : own_.settings) moved.push_back(setting.row->name());
  settings::withdraw(moved, run.settings, table_, solver);
  settings::apply(run.settings, solver);
}

}  // namespace brel::plugin
