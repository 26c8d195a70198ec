#pragma once

#include "grb/gurobi/exception.h"
#include "grb/gurobi/model.h"

namespace grb {

// Gives an integer parameter a value while something is read by it, and the value that it had back. Gurobi keeps its
// results over a change of parameters.
class ParameterAside {
 public:
  ParameterAside(GurobiModel& model, const char* name, int value)
      : model_(model), name_(name), before_(model.getIntParam(name)) {
    model.setIntParam(name, value);
  }
  ~ParameterAside() {
    try {
      model_.setIntParam(name_, before_);
    } catch (const GurobiException&) {
      // a model that no longer takes what it had is beyond help, and the read has its own error to tell
    }
  }
  ParameterAside(const ParameterAside&) = delete;
  ParameterAside& operator=(const ParameterAside&) = delete;

 private:
  GurobiModel& model_;
  const char* name_;
  int before_;
};

}  // namespace grb
