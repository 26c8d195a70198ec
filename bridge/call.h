// The frame around the body of every exported function that needs Python.
#pragma once

#include <memory>

#include "bridge/env.h"
#include "bridge/failure.h"
#include "bridge/gil.h"
#include "bridge/gurobipy.h"
#include "bridge/handles.h"
#include "bridge/log.h"
#include "bridge/model.h"
#include "grb/gurobi/constants.h"

namespace bridge {

/// Holds the interpreter's lock when there is an interpreter to lock. Environments without Python need none.
class GilIfAny {
 public:
  GilIfAny() : held_(gurobipyLoaded()), state_(held_ ? PyGILState_Ensure() : PyGILState_UNLOCKED) {}
  ~GilIfAny() {
    if (held_) PyGILState_Release(state_);
  }
  GilIfAny(const GilIfAny&) = delete;
  GilIfAny& operator=(const GilIfAny&) = delete;

 private:
  bool held_;
  PyGILState_STATE state_;
};

/// Runs `body(Env&)` with the lock held. Returns 0, 10002 for a NULL or stale handle, or the code of whatever `body`
/// threw, whose text is then the environment's message; a call that succeeds empties the message. Lines that Gurobi
/// logs meanwhile go to the environment's model, if it has one.
template <class Body>
int onEnv(GRBenv* handle, Body&& body) noexcept {
  const std::shared_ptr<Env> env = envs().find(handle);
  if (env == nullptr) return grb::error::kNullArgument;
  const GilIfAny gil;
  const std::shared_ptr<Model> model = env->model.lock();
  const LogScope scope(model.get());
  try {
    body(*env);
    env->setMessage("");
    return 0;
  } catch (...) {
    return env->fail(currentFailure());
  }
}

/// Runs `body(Model&)` likewise. Failures leave their text in the environment of the model.
template <class Body>
int onModel(GRBmodel* handle, Body&& body) noexcept {
  const std::shared_ptr<Model> model = models().find(handle);
  if (model == nullptr) return grb::error::kNullArgument;
  const Gil gil;
  const LogScope scope(model.get());
  try {
    body(*model);
    return 0;
  } catch (...) {
    return model->env().fail(currentFailure());
  }
}

}  // namespace bridge
