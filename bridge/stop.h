// Ending a running solve from outside.
#pragma once

#include <atomic>
#include <thread>

namespace bridge {

class Model;

/// Put around each call in which the library works for long. Meanwhile GRBterminate may come from any thread and from a
/// signal handler: it only sets a flag and wakes the thread that this object keeps, which then asks gurobipy to
/// terminate, again and again until the call returns, since the library forgets a request that comes before its start.
///
/// A callback of gurobipy's that polls the flag would not do: there is none during a relaxation, and computing an IIS
/// of a small model never calls it.
///
/// During a relaxation gurobipy keeps the interpreter's lock, except while it hands out a log line: a stop takes effect
/// at the next line only ("DisplayInterval" seconds at most, unless the output is off), and other threads wait as long.
///
/// Throws Failure 10017 when such a call on the model is under way already: gurobipy lets some of them through.
///
/// Made and destroyed with the lock of the interpreter held; lets it go while it waits for its thread to end.
class StopWatch {
 public:
  explicit StopWatch(Model& model);
  ~StopWatch();
  StopWatch(const StopWatch&) = delete;
  StopWatch& operator=(const StopWatch&) = delete;

 private:
  void watch();

  Model& model_;
  std::atomic<bool> done_{false};
  std::thread thread_;
};

/// Terminates at once when GRBterminate was called on the model. For the end of each callback: the solve then stops
/// where the caller asked for it, not a moment later. With the lock held.
void passOnStop(Model& model);

}  // namespace bridge
