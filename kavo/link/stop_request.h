#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace kavo {

// A request to stop the running solve that cannot be lost: solvers forget a stop that arrives before their search has
// begun, so a thread repeats it through the link's hook every few milliseconds until the solve returns.
class StopRequest {
 public:
  using Hook = void (*)(void* data);

  StopRequest() = default;
  ~StopRequest() { end(); }
  StopRequest(const StopRequest&) = delete;
  StopRequest& operator=(const StopRequest&) = delete;

  // A solve begins: requests count from now on, earlier ones are forgotten.
  void begin();
  // The solve has returned.
  void end();
  // Asks for the stop; nothing happens outside a solve. The first request tells by whom. Any thread, also one that the
  // solver waits for: it calls no hook itself. When there is no thread to be had (std::system_error) the request counts
  // all the same, but only those hear of it who ask.
  void request(bool signalled);
  // Sets or (null) takes back the way to stop the solver. The earlier one is not running any more on return.
  void setHook(Hook hook, void* data);

  bool requested() const { return requested_; }
  bool signalled() const { return signalled_; }

 private:
  void repeat();

  std::mutex mutex_;  // guards active_, the thread and the start of a request
  std::condition_variable ended_;
  std::thread repeater_;
  bool active_ = false;
  std::atomic<bool> requested_ = false, signalled_ = false;
  std::mutex hookMutex_;  // held while the hook runs
  Hook hook_ = nullptr;
  void* data_ = nullptr;
};

}  // namespace kavo
