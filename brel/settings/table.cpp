#include "brel/settings/table.h"

#include <cmath>
#include <optional>

#include "brel/host.h"
#include "brel/settings/near_names.h"
#include "brel/settings/rewrite_settings.h"
#include "tav/attr/lib/range_info.h"
#include "tav/opt/solver_services.h"
#include "tav/util/ascii.h"
#include "tav/util/number.h"

namespace brel::settings {
namespace {

namespace lib = tav::attr::lib;

template <class T>
std::optional<T> bound(double value) {
  return std::isinf(value) ? std::nullopt : std::optional(static_cast<T>(value));
}

template <class T>
std::shared_ptr<const tav::attr::AbstractBaseInfo> rangeInfo(const kavo_setting_info& told,
                                                             std::optional<T> (*number)(std::string_view)) {
  return std::make_shared<lib::RangeInfo<T>>(told.name, 1, true,
                                             told.default_text == nullptr ? std::nullopt : number(told.default_text),
                                             bound<T>(told.lower), bound<T>(told.upper), std::nullopt, told.help);
}

std::shared_ptr<const tav::attr::AbstractBaseInfo> infoOf(const kavo_setting_info& told) {
  if (told.type == KAVO_SETTING_INT) return rangeInfo<int>(told, tav::util::toInt);
  if (told.type == KAVO_SETTING_DOUBLE) return rangeInfo<double>(told, tav::util::toDouble);
  const auto value = told.default_text == nullptr ? std::nullopt : std::optional<std::string>(told.default_text);
  return std::make_shared<lib::Info<std::string>>(told.name, 1, true, value, std::nullopt, told.help);
}

}  // namespace

Table::Table(const trpRec* host, tav::opt::AbstractSolver& solver, const LinkDef& definition)
    : plugins_(pluginSettings(definition)) {
  addHost(host);
  addSolver(solver);
  for (std::size_t i = 0; i < rewriteSettings().size(); ++i) {
    add({Owner::framework, static_cast<int>(i), "Rewriting", rewriteSettings()[i]});
  }
  for (std::size_t i = 0; i < plugins_.size(); ++i) {
    add({Owner::plugin, static_cast<int>(i), "Plug-ins", plugins_[i].info});
  }
}

const Row* Table::find(std::string_view name) const {
  const auto found = places_.find(tav::util::lowerCased(name));
  return found == places_.end() ? nullptr : &rows_[found->second];
}

std::vector<std::string> Table::namesNear(std::string_view unknown) const {
  std::vector<std::string> names;
  for (const Row& row : rows_) names.push_back(row.name());
  return nearNames(unknown, names);
}

void Table::add(Row row) {
  if (places_.emplace(tav::util::lowerCased(row.name()), rows_.size()).second) rows_.push_back(std::move(row));
}

void Table::addHost(const trpRec* host) {
  kavo_setting_info told{};
  for (std::size_t i = 0;; ++i) {
    checkHost(kavo_link_own_setting_info(host, i, &told));
    if (told.name == nullptr) return;
    add({Owner::host, 0, told.group, infoOf(told)});
  }
}

void Table::addSolver(tav::opt::AbstractSolver& solver) {
  const auto* services = dynamic_cast<const tav::opt::AbstractSolverServices*>(&solver);
  const auto dictionary = solver.makeModelAttributes(solver.shortName(), {});
  if (!dictionary) return;
  for (const int key : dictionary->keys()) {
    add({Owner::solver, key, services ? services->settingGroup(key) : solver.name(), dictionary->info(key)});
  }
}

}  // namespace brel::settings
