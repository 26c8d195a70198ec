#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace brel::watch {

// A thread of its own that does a piece of work again and again, until it is destroyed.
class Ticking {
 public:
  // work: must not raise; says how long to wait before the next time. First it waits for as long as `first`.
  Ticking(std::chrono::milliseconds first, std::function<std::chrono::milliseconds()> work);
  // Waits for a piece of work under way.
  ~Ticking();
  Ticking(const Ticking&) = delete;
  Ticking& operator=(const Ticking&) = delete;

 private:
  void run(std::chrono::milliseconds wait);

  std::function<std::chrono::milliseconds()> work_;
  std::mutex mutex_;  // guards what follows
  std::condition_variable changed_;
  bool isOver_ = false;
  std::thread thread_;
};

}  // namespace brel::watch
