// The handles that callers hold, and what stands behind them.
#pragma once

#include <semaphore.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <unordered_map>

#include "grb/gurobi/types.h"

/// What the caller's pointers point to. Never freed and never used again: a stale handle stays recognisable, and
/// GRBterminate may look at one in a signal handler without a lock.
struct GRBenv {
  int unused = 0;
};

struct GRBmodel {
  std::atomic<bool> solving{false};  ///< a call that GRBterminate can end is under way
  std::atomic<bool> stop{false};     ///< GRBterminate was called during it
  sem_t wake{};                      ///< posted with `stop`, and when the call returns

  GRBmodel() { sem_init(&wake, 0, 0); }
};

namespace bridge {

class Env;
class Model;

/// The live objects of one kind by their handle. Thread-safe; needs no interpreter.
template <class Handle, class Object>
class Registry {
 public:
  /// A new handle, not yet alive.
  Handle* reserve() { return new Handle; }

  void add(Handle* handle, std::shared_ptr<Object> object) {
    const std::lock_guard lock(mutex_);
    objects_.emplace(handle, std::move(object));
  }

  /// The object, or null when the handle is NULL, stale or was never made here.
  std::shared_ptr<Object> find(const Handle* handle) const {
    const std::lock_guard lock(mutex_);
    const auto found = objects_.find(handle);
    return found == objects_.end() ? nullptr : found->second;
  }

  /// Ends the handle's life and returns its object, or null as find() does.
  std::shared_ptr<Object> remove(const Handle* handle) {
    const std::lock_guard lock(mutex_);
    const auto found = objects_.find(handle);
    if (found == objects_.end()) return nullptr;
    std::shared_ptr<Object> object = std::move(found->second);
    objects_.erase(found);
    return object;
  }

 private:
  mutable std::mutex mutex_;
  std::unordered_map<const Handle*, std::shared_ptr<Object>> objects_;
};

Registry<GRBenv, Env>& envs();
Registry<GRBmodel, Model>& models();

}  // namespace bridge
