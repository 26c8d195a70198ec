#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "brel/settings/plugin_settings.h"
#include "kavo/link.h"
#include "tav/attr/abstract_dict.h"
#include "tav/opt/solver.h"

namespace brel::settings {

// Who acts on a setting.
enum class Owner { host, solver, framework, plugin };

struct Row {
  Owner owner;
  // Of the solver's: in its dictionary; of the framework's: the place in rewriteSettings(); of a plug-in's: the place
  // in Table::plugins().
  int key;
  std::string group;
  std::shared_ptr<const tav::attr::AbstractBaseInfo> info;

  const std::string& name() const { return info->name(); }
};

// Every setting that can be given: the one source of checks, suggestions, help and descriptions.
class Table {
 public:
  // The settings that the host has declared, then those of the solver, of the framework and of the link's plug-ins. Of
  // several of one name the first counts. Takes no licence.
  Table(const trpRec* host, tav::opt::AbstractSolver& solver, const LinkDef& definition);

  const std::vector<Row>& rows() const { return rows_; }
  const std::vector<PluginSetting>& plugins() const { return plugins_; }

  // Look-up in any case; null when there is no such setting.
  const Row* find(std::string_view name) const;

  // Names that may have been meant by an unknown one, at most three.
  std::vector<std::string> namesNear(std::string_view unknown) const;

 private:
  void add(Row row);
  void addHost(const trpRec* host);
  void addSolver(tav::opt::AbstractSolver& solver);

  std::vector<Row> rows_;
  std::vector<PluginSetting> plugins_;
  std::unordered_map<std::string, std::size_t> places_;  // in rows_, by name in lower case
};

}  // namespace brel::settings
