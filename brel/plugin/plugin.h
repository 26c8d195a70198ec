#pragma once

#include <memory>

#include "brel/link_def.h"
#include "brel/load/loader.h"
#include "brel/settings/plugin_values.h"
#include "brel/settings/settings.h"
#include "brel/watch/watch.h"
#include "kavo/link.h"
#include "tav/opt/log.h"
#include "tav/opt/solver.h"
#include "tav/opt/solver_services.h"

namespace brel::plugin {

// One solve as plug-ins see it. Everything lives until the solve's last moment is over.
struct Solve {
  trpRec* host;
  tav::opt::AbstractSolver& solver;
  tav::opt::AbstractSolverServices* services;  // null when the solver has none
  tav::opt::AbstractLog& log;
  const settings::Table& table;
  settings::Given& given;  // what is added while the solve is prepared is set with the rest
  settings::PluginValues& values;
  load::TranslatedModel& model;
  load::Choices& choices;  // how the model is loaded
  watch::Watch& watch;     // who hears of the search
  bool isDone = false;     // the results are there without a solve
  kavo_finish result{};    // from `read` on: closes the results
};

// An optional feature of the framework, made anew for each solve. At each moment the plug-ins have their turn in the
// order in which the link has switched them on. Whatever one raises ends the solve with that error.
class AbstractPlugin {
 public:
  virtual ~AbstractPlugin() = default;
  // The settings are known and the model is translated; nothing is taken yet, no licence either. What cannot be done
  // is refused here, and what needs no solver may be done (Solve::isDone).
  virtual void prepare(Solve& /*solve*/) {}
  // The model is in the solver.
  virtual void loaded(Solve& /*solve*/) {}
  // The solver has returned: reads from it and changes nothing.
  virtual void read(Solve& /*solve*/) {}
  // Everything is read: may change the solver's model.
  virtual void finish(Solve& /*solve*/) {}
};

// Null for a plug-in that does nothing of its own.
std::unique_ptr<AbstractPlugin> makePlugin(Plugin plugin);

}  // namespace brel::plugin
