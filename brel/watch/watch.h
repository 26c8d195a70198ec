#pragma once

#include <memory>
#include <span>
#include <vector>

#include "brel/load/loader.h"
#include "kavo/link.h"
#include "tav/opt/solver.h"

namespace brel::watch {

enum class Reason { tick, node, incumbent, end };

// How far a running solve is. Numbers as in kavo_progress: NaN while there is none.
struct Progress {
  Reason reason = Reason::tick;
  double seconds = 0;
  double nodes, incumbent, bound, gap;
  double solutions = 0;
  std::span<const double> point;  // of the user's columns, where the reason is a new incumbent
};

// Hears of the progress of a solve: at each new incumbent (a point better than all before by the user's own
// objective), at each solved node, at each piece of log, every tenth of a second, and when the solve is over.
class Listener {
 public:
  virtual ~Listener() = default;
  // Never called by two threads at once, but not always by the same one. What it raises ends the solve with that error.
  virtual void hear(const Progress& now) = 0;
};

// Follows one solve and tells the listeners. Without any it costs nothing.
class Watch {
 public:
  // Both must outlive the watch. The model is looked at when the search runs.
  Watch(trpRec* host, tav::opt::AbstractSolver& solver, const load::TranslatedModel& model);
  ~Watch();
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;

  // Before `begin`.
  void add(std::shared_ptr<Listener> listener) { listeners_.push_back(std::move(listener)); }

  // Around the solve. `end` tells the listeners the last time and raises what one of them raised meanwhile.
  void begin();
  void end();

  // The solver has logged something.
  void logged();
  // Stops the solve because a rule says so.
  void stopByRule();
  bool isStoppedByRule() const { return stoppedByRule_; }

 private:
  trpRec* host_;
  tav::opt::AbstractSolver& solver_;
  const load::TranslatedModel& model_;
  std::vector<std::shared_ptr<Listener>> listeners_;
  bool stoppedByRule_ = false;
};

}  // namespace brel::watch
