#pragma once

#include "brel/watch/progress.h"

namespace brel::plugin {

// Every so many nodes, and every so many seconds, of a solve; 0: never.
class Steps {
 public:
  Steps(double nodes, double seconds) : nodes_(nodes), seconds_(seconds), nextNodes_(nodes), nextSeconds_(seconds) {}

  // Whether a step was passed since the last time; the next one counts from here.
  bool passedNodes(const watch::Progress& now) { return passed(nodes_, now.nodes, nextNodes_); }
  bool passedSeconds(const watch::Progress& now) { return passed(seconds_, now.seconds, nextSeconds_); }

 private:
  static bool passed(double step, double value, double& next) {
    if (step <= 0 || !(value >= next)) return false;
    next = value + step;
    return true;
  }

  double nodes_, seconds_, nextNodes_, nextSeconds_;
};

}  // namespace brel::plugin
