#pragma once

#include <atomic>
#include <csignal>
#include <thread>

#include "kavo/kavo.h"

namespace app {

// Keeps SIGINT and SIGTERM away from this thread and those it starts, and SIGPIPE from everybody. To be called before
// anything starts a thread, so that the solver's own handlers never see them.
void blockSignals();

// Takes SIGINT and SIGTERM on a thread of its own: the first one stops the solve of `model`, running or to come, and
// keeps what was found; a second one ends the program with exit code 130.
class SignalWatch {
 public:
  explicit SignalWatch(trpRec* model);
  ~SignalWatch();
  SignalWatch(const SignalWatch&) = delete;
  SignalWatch& operator=(const SignalWatch&) = delete;

  bool interrupted() const { return interrupted_; }

 private:
  void watch();

  trpRec* model_;
  int signals_, end_;  // descriptors: signals to read, and the end of the watch
  std::atomic<bool> interrupted_ = false;
  std::thread thread_;
};

}  // namespace app
