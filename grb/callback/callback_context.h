#pragma once

#include <array>
#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string_view>

#include "grb/callback/live_callback_data.h"
#include "grb/gurobi/callback_constants.h"
#include "tav/opt/callback.h"
#include "tav/opt/log.h"

namespace grb {

// What the two Gurobi callbacks of a model work on: who listens, to what, and what went wrong while they listened.
class CallbackContext {
 public:
  // Entries by their id, so that a subscriber that subscribes again replaces its entry.
  using Entries = std::map<int, tav::opt::ContextEntry>;

  std::shared_ptr<tav::opt::AbstractCallback> handler;
  std::shared_ptr<tav::opt::AbstractLog> log;
  bool isMuted =
      false;  // the log is not to hear what Gurobi says, such as of parameters that move while results are read
  std::shared_ptr<LiveCallbackData> live = std::make_shared<LiveCallbackData>();

  // Indices 0 and 1 subscribe to solved nodes, 2 to new incumbents; false for any other index.
  bool subscribe(int index, const tav::opt::ContextEntry& entry);
  // Null for a where code that nobody can subscribe to.
  const Entries* entries(int where) const;

  // The way to stop the running solve.
  std::function<void()> stop;
  // Keeps the exception in flight, the first one of a run, for rethrowKept, and stops the solve.
  void stopWithException() noexcept;
  // Raises what a handler or the log raised during the run that has just ended, and forgets it.
  void rethrowKept();

 private:
  std::array<Entries, 2> stores_;  // solved nodes, new incumbents
  std::mutex lock_;                // Gurobi may log from another thread than it solves on
  std::exception_ptr kept_;
};

}  // namespace grb
