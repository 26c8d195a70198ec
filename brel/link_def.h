#pragma once

#include <map>
#include <string>
#include <vector>

namespace brel {

// Optional features of the framework, by number; docs/plugins.md tells what each does.
enum class Plugin : int {
  dumpSolutions = 0,
  fixedSolve = 1,
  writeBack = 2,
  multipleObjectives = 3,
  ranges = 4,
  multipleStarts = 5,
  rangeRestart = 6,
  pool = 7,
  statistics = 8,
  trace = 9,
  stopExpression = 10
};

// A value that a plug-in takes, by number.
enum class PluginAttrib : int {};

// Which plug-ins a link switches on, in which order, and under which option names their attributes are set.
class LinkDef {
 public:
  void enable(Plugin plugin) { enabled_.push_back(plugin); }
  void setName(PluginAttrib attribute, std::string name) { names_[attribute] = std::move(name); }

  const std::vector<Plugin>& enabled() const { return enabled_; }
  const std::map<PluginAttrib, std::string>& names() const { return names_; }

 private:
  std::vector<Plugin> enabled_;
  std::map<PluginAttrib, std::string> names_;
};

}  // namespace brel
