// The caller's callback during a solve.
#pragma once

#include <pybind11/pybind11.h>

#include <string>

namespace bridge {

class Model;

/// What `cbdata` points to while a callback runs.
struct CallbackFrame {
  Model* model;
  int where;
  std::string message;   ///< keeps the text that GRBcbget gave out
  CallbackFrame* outer;  ///< of a solve in whose callback this one runs
};

/// Calls gurobipy's `method` ("optimize" or "computeIIS") of the model, with the caller's callback if there is one.
/// When that returns non-zero the solve is terminated and Failure 10011 is thrown. With the lock held.
void runWithCallback(Model& model, const char* method);

/// The frame of `cbdata`, if it is one of a callback that runs on this thread now; else null.
CallbackFrame* findFrame(const void* cbdata);

}  // namespace bridge
