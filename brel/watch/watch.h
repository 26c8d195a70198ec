#pragma once

#include <memory>
#include <string>
#include <vector>

#include "brel/load/loader.h"
#include "brel/watch/progress.h"
#include "kavo/link.h"
#include "tav/opt/solver.h"

namespace brel::watch {

class Running;

// Follows one solve and tells the listeners, among them the host if it wants to hear. Without any it costs nothing.
class Watch {
 public:
  // All must outlive the watch. The model is looked at when the search runs.
  Watch(trpRec* host, tav::opt::AbstractSolver& solver, const load::TranslatedModel& model);
  ~Watch();
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;

  // Before `begin`.
  void add(std::shared_ptr<Listener> listener) { listeners_.push_back(std::move(listener)); }

  // Around the solve, on the thread that solves. `end` tells the listeners for the last time and raises what one of
  // them has raised. hasSolved: the solver has returned and can be asked for its last numbers; false after an error.
  void begin();
  void end(bool hasSolved);

  // The solver has logged something.
  void logged();
  // For listeners, while they hear: a line for the log. It appears as soon as the thread that solves comes by, since
  // hosts take their log from one thread at a time.
  void say(std::string line);
  // For listeners: stops the solve because a rule says so. The stop is repeated until the solver returns, which may
  // forget one that comes before its search.
  void stopByRule();
  bool isStoppedByRule() const { return stoppedByRule_; }

 private:
  trpRec* host_;
  tav::opt::AbstractSolver& solver_;
  const load::TranslatedModel& model_;
  std::vector<std::shared_ptr<Listener>> listeners_;
  std::unique_ptr<Running> running_;  // while there is somebody to tell
  bool stoppedByRule_ = false;
};

}  // namespace brel::watch
