#include "kavo/link/stop_request.h"

#include <chrono>

namespace kavo {

namespace {
constexpr std::chrono::milliseconds kRepeatAfter{20};
}

void StopRequest::begin() {
  const std::lock_guard lock(mutex_);
  requested_ = signalled_ = false;
  active_ = true;
}

void StopRequest::end() {
  std::thread repeater;
  {
    const std::lock_guard lock(mutex_);
    active_ = false;
    repeater.swap(repeater_);
  }
  ended_.notify_all();
  if (repeater.joinable()) repeater.join();
}

void StopRequest::request(bool signalled) {
  const std::lock_guard lock(mutex_);
  if (!active_) return;
  if (!requested_) {
    signalled_ = signalled;
    requested_ = true;
  }
  if (!repeater_.joinable()) repeater_ = std::thread([this] { repeat(); });
}

void StopRequest::setHook(Hook hook, void* data) {
  const std::lock_guard lock(hookMutex_);
  hook_ = hook;
  data_ = data;
}

void StopRequest::repeat() {
  std::unique_lock lock(mutex_);
  while (active_) {
    lock.unlock();
    {
      const std::lock_guard calling(hookMutex_);
      if (hook_ != nullptr) hook_(data_);
    }
    lock.lock();
    ended_.wait_for(lock, kRepeatAfter, [this] { return !active_; });
  }
}

}  // namespace kavo
