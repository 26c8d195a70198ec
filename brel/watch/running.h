#pragma once

#include <atomic>
#include <chrono>
#include <exception>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "brel/watch/progress.h"
#include "brel/watch/search.h"
#include "brel/watch/ticking.h"

namespace brel::watch {

// A solve under way that somebody follows: gathers what its search, its log and the clock tell, and tells the
// listeners. To be made and ended on the thread that solves.
class Running {
 public:
  Running(trpRec* host, tav::opt::AbstractSolver& solver, const load::TranslatedModel& model,
          std::vector<std::shared_ptr<Listener>> listeners);
  ~Running();
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

  // As in Watch.
  void end(bool hasSolved);
  void logged();
  void say(std::string line) { said_.push_back(std::move(line)); }
  void stop();

 private:
  class Forwarder;

  void onEvent(int kind);
  void onPoint(const Search::Facts& facts);
  std::chrono::milliseconds tick();
  bool isBetter(double objective) const;
  void note(const Search::Facts& facts);
  void settleBound();
  void tell(Reason reason);
  void tellOne(std::shared_ptr<Listener>& listener);
  void flushSaid();

  trpRec* host_;
  tav::opt::AbstractSolver& solver_;
  Search search_;
  const std::chrono::steady_clock::time_point begin_ = std::chrono::steady_clock::now();

  std::mutex mutex_;                                  // held while listeners hear; guards what follows
  std::vector<std::shared_ptr<Listener>> listeners_;  // null: it has raised something
  Progress now_;
  std::vector<std::string> said_;
  std::exception_ptr failure_;  // the first one

  std::atomic<bool> isStopping_ = false;
  std::shared_ptr<Forwarder> forwarder_;
  std::unique_ptr<Ticking> ticking_;  // the last that is made, the first that goes
};

}  // namespace brel::watch
