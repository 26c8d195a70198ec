#include "bridge/stop.h"

#include <pybind11/pybind11.h>
#include <signal.h>
#include <time.h>

#include <system_error>

#include "bridge/exports.h"
#include "bridge/failure.h"
#include "bridge/gil.h"
#include "bridge/handles.h"
#include "bridge/model.h"
#include "grb/gurobi/constants.h"

namespace bridge {
namespace {

/// Blocks all signals in the calling thread for its life; a thread made meanwhile inherits that.
class WithoutSignals {
 public:
  WithoutSignals() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  ~WithoutSignals() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  WithoutSignals(const WithoutSignals&) = delete;
  WithoutSignals& operator=(const WithoutSignals&) = delete;

 private:
  sigset_t before_{};
};

void terminate(Model& model) {
  try {
    model.object().attr("terminate")();
  } catch (const pybind11::error_already_set&) {
    // The solve goes on; the next attempt is 20 ms away.
  }
}

void waitForWake(sem_t& wake) {
  while (sem_wait(&wake) != 0) {  // only a signal ends the wait early
  }
}

void waitShortly(sem_t& wake) {
  constexpr long kNanoseconds = 20'000'000;
  constexpr long kSecond = 1'000'000'000;
  timespec until{};
  clock_gettime(CLOCK_REALTIME, &until);
  until.tv_nsec += kNanoseconds;
  if (until.tv_nsec >= kSecond) {
    until.tv_nsec -= kSecond;
    ++until.tv_sec;
  }
  sem_timedwait(&wake, &until);
}

}  // namespace

StopWatch::StopWatch(Model& model) : model_(model) {
  GRBmodel& handle = *model_.handle();
  if (handle.solving.exchange(true))
    throw Failure(grb::error::kOptimizationInProgress, "Attempted to access a model while optimization is in progress");
  while (sem_trywait(&handle.wake) == 0) {  // wakes left over from an earlier solve
  }
  handle.stop = false;
  const WithoutSignals blocked;  // signals stay with the host's own threads
  try {
    thread_ = std::thread([this] { watch(); });
  } catch (const std::system_error&) {
    handle.solving = false;
    throw;
  }
}

StopWatch::~StopWatch() {
  GRBmodel& handle = *model_.handle();
  handle.solving = false;
  done_ = true;
  sem_post(&handle.wake);
  const WithoutGil released;
  thread_.join();
}

void StopWatch::watch() {
  GRBmodel& handle = *model_.handle();
  while (!done_) {
    if (handle.stop) {
      {
        const Gil gil;
        terminate(model_);
      }
      waitShortly(handle.wake);
    } else {
      waitForWake(handle.wake);
    }
  }
}

void passOnStop(Model& model) {
  const GRBmodel& handle = *model.handle();
  if (handle.solving && handle.stop) terminate(model);
}

extern "C" void GRBterminate(GRBmodel* model) {
  if (model == nullptr || !model->solving) return;
  model->stop = true;
  sem_post(&model->wake);
}

}  // namespace bridge
