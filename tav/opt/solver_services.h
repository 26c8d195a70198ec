#pragma once

#include <string>

#include "tav/opt/codes.h"

namespace tav::opt {

// What a solver may tell beyond AbstractSolver. The framework asks for it by a dynamic cast; without it these features
// are absent.
class AbstractSolverServices {
 public:
  virtual ~AbstractSolverServices() = default;
  // The solver library in use, for people.
  virtual std::string libraryText() const = 0;
  // Why the last solve ended.
  virtual StopReason stopReason() const = 0;
};

}  // namespace tav::opt
