#pragma once

#include <atomic>
#include <csignal>
#include <functional>
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
  // last: what to do before the program ends by a second signal, on the thread of the watch.
  SignalWatch(trpRec* model, std::function<void()> last);
  ~SignalWatch();
  SignalWatch(const SignalWatch&) = delete;
  SignalWatch& operator=(const SignalWatch&) = delete;

  bool interrupted() const { return interrupted_; }

 private:
  void watch();

  trpRec* model_;
  std::function<void()> last_;
  int signals_, end_;  // descriptors: signals to read, and the end of the watch
  std::atomic<bool> interrupted_ = false;
  std::thread thread_;
};

}  // namespace app
