#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "brel/host.h"
#include "brel/link_def.h"
#include "brel/load/loaded.h"
#include "brel/plugin/plugin.h"
#include "brel/settings/settings.h"
#include "brel/settings/table.h"
#include "brel/watch/watch.h"
#include "kavo/link.h"
#include "tav/opt/solver.h"

namespace brel {

// The framework around one solver: reads the host's model, loads it into the solver, solves, and writes the results
// back.
class Link {
 public:
  // Once per process, before the first link and after the last.
  static void initialize();
  static void finalize();

  Link(std::shared_ptr<tav::opt::AbstractSolver> solver, LinkDef definition);
  ~Link();
  Link(const Link&) = delete;
  Link& operator=(const Link&) = delete;

  // These return 0, or 1 after telling the host what failed (kavo_link_error). No exception leaves them.

  // Binds the link to a model and tells the host about the solver and its settings. Takes no licence.
  std::int32_t readyAPI(trpRec* model);
  // Brings the model as it is now into the solver, solves it, and fills in the results. Also 0 when the model is
  // infeasible or a limit stopped the solve.
  std::int32_t callSolver();
  // Tells that the host has changed the model since the last solve. The next one asks the host what has changed.
  std::int32_t modifyProblem();

 private:
  void run();
  bool canGoOn(const std::optional<load::Loaded>& before, const load::Loaded& wanted, const plugin::Solve& solve) const;
  bool bring(const load::Loaded& wanted, plugin::Solve& solve);
  void setUp(const settings::Given& given, bool goesOn);
  void runSolver(HostLog& log, plugin::Solve& solve, bool goesOn);

  std::shared_ptr<tav::opt::AbstractSolver> solver_;
  LinkDef definition_;
  trpRec* model_ = nullptr;
  std::optional<settings::Table> table_;  // of model_
  std::vector<std::string> inForce_;      // names of what the last solve was given
  std::optional<load::Loaded> loaded_;    // what the solver's model is, where the next solve may go on from it
};

}  // namespace brel
