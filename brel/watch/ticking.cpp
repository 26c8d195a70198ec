#include "brel/watch/ticking.h"

#include <signal.h>

#include <utility>

namespace brel::watch {
namespace {

// Signals stay with the host's own threads: a thread inherits what is blocked where it is made.
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
  sigset_t before_;
};

}  // namespace

Ticking::Ticking(std::chrono::milliseconds first, std::function<std::chrono::milliseconds()> work)
    : work_(std::move(work)) {
  const WithoutSignals blocked;
  thread_ = std::thread([this, first] { run(first); });
}

Ticking::~Ticking() {
  {
    const std::lock_guard lock(mutex_);
    isOver_ = true;
  }
  changed_.notify_all();
  thread_.join();
}

void Ticking::run(std::chrono::milliseconds wait) {
  std::unique_lock lock(mutex_);
  while (!isOver_) {
    if (changed_.wait_for(lock, wait, [this] { return isOver_; })) return;
    lock.unlock();
    wait = work_();
    lock.lock();
  }
}

}  // namespace brel::watch
