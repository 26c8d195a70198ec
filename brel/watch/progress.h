#pragma once

#include <limits>
#include <span>

namespace brel::watch {

enum class Reason { tick, node, incumbent, end };

// How far a running solve is. Numbers as in kavo_progress: NaN while there is none.
struct Progress {
  static constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

  Reason reason = Reason::tick;
  double seconds = 0;
  double nodes = kNone, incumbent = kNone, bound = kNone, gap = kNone;
  double solutions = 0;           // how many incumbents there were so far
  std::span<const double> point;  // of the user's columns, where the reason is a new incumbent
};

// Hears of the progress of a solve: at each new incumbent (a point better than all before by the user's own
// objective), at each solved node, at each piece of log, every tenth of a second, and when the solver has returned.
class Listener {
 public:
  virtual ~Listener() = default;
  // Never called by two threads at once, but not always by the same one. One that raises stops the solve, hears no
  // more, and what it raised is the solve's error.
  virtual void hear(const Progress& now) = 0;
};

}  // namespace brel::watch
