// The interpreter's lock.
#pragma once

#include <Python.h>

namespace bridge {

/// Holds the interpreter's lock for its life. Nests; any thread may take it. The interpreter must be running.
class Gil {
 public:
  Gil() : state_(PyGILState_Ensure()) {}
  ~Gil() { PyGILState_Release(state_); }
  Gil(const Gil&) = delete;
  Gil& operator=(const Gil&) = delete;

 private:
  PyGILState_STATE state_;
};

/// Lets other threads have the lock for its life: put around everything that may wait, above all the caller's
/// callbacks.
class WithoutGil {
 public:
  WithoutGil() : thread_(PyEval_SaveThread()) {}
  ~WithoutGil() { PyEval_RestoreThread(thread_); }
  WithoutGil(const WithoutGil&) = delete;
  WithoutGil& operator=(const WithoutGil&) = delete;

 private:
  PyThreadState* thread_;
};

}  // namespace bridge
