// Gurobi's log lines on their way to the caller's log callback.
#pragma once

#include "grb/gurobi/types.h"

namespace bridge {

class Model;

/// Names the model that the calling thread works on, for its life. gurobipy hands every line to one logger of the
/// process, on the thread that caused it and without saying for which model.
class LogScope {
 public:
  explicit LogScope(Model* model);
  ~LogScope();
  LogScope(const LogScope&) = delete;
  LogScope& operator=(const LogScope&) = delete;

 private:
  Model* before_;
};

/// Puts a handler on gurobipy's logger that gives each line to the log callback of the current model of its thread.
/// With the lock held; throws what Python throws.
void installLogHandler();

}  // namespace bridge
