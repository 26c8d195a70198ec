#include "bridge/env.h"

#include <algorithm>
#include <cstdio>

#include "bridge/call.h"
#include "bridge/exports.h"
#include "bridge/gurobipy.h"
#include "bridge/handles.h"
#include "grb/gurobi/constants.h"

namespace py = pybind11;

namespace bridge {

std::shared_ptr<Env> Env::make() {
  return {new Env, [](Env* dead) {
            const GilIfAny gil;
            delete dead;
          }};
}

const py::object& Env::object() const {
  if (!object_) throw Failure(grb::error::kNoLicense, unusable_);
  return object_;
}

void Env::setUnusable(std::string reason) {
  unusable_ = std::move(reason);
  setMessage(unusable_);
}

void Env::setMessage(std::string_view text) {
  const std::size_t length = std::min(text.size(), message_.size() - 1);
  std::copy_n(text.begin(), length, message_.begin());
  message_[length] = '\0';
}

int Env::fail(const Failure& failure) {
  setMessage(failure.what());
  return failure.code();
}

namespace {

bool servesVersion(int major, int minor, int technical) {
  if (major == grb::kVersionMajor && minor == grb::kVersionMinor) return true;
  // There is no environment to keep a text in; the library prints it as well.
  std::printf("Invalid Gurobi major or minor version (%d.%d.%d); this library is version %d.%d\n", major, minor,
              technical, grb::kVersionMajor, grb::kVersionMinor);
  std::fflush(stdout);
  return false;
}

/// Without Python the environment exists all the same, and its message says why it can do nothing.
std::shared_ptr<Env> makeEnv() {
  std::shared_ptr<Env> env = Env::make();
  if (const std::string& failure = loadGurobipy(); !failure.empty()) {
    env->setUnusable(failure);
    return env;
  }
  const Gil gil;
  try {
    using namespace py::literals;
    env->setObject(gurobipy().environment("empty"_a = true));
  } catch (...) {
    env->setUnusable(currentFailure().what());
  }
  return env;
}

}  // namespace

extern "C" {

int GRBemptyenvinternal(GRBenv** envP, int major, int minor, int technical) {
  if (envP == nullptr) return grb::error::kNullArgument;
  *envP = nullptr;
  if (!servesVersion(major, minor, technical)) return grb::error::kInvalidArgument;
  try {
    GRBenv* handle = envs().reserve();
    envs().add(handle, makeEnv());
    *envP = handle;
    return 0;
  } catch (const std::exception&) {
    return grb::error::kOutOfMemory;
  }
}

int GRBstartenv(GRBenv* env) {
  return onEnv(env, [](Env& e) { e.object().attr("start")(); });
}

void GRBfreeenv(GRBenv* env) {
  onEnv(env, [env](Env& e) {
    if (!e.model.expired()) return;  // a model's environment goes with its model
    envs().remove(env);
    if (e.hasObject()) e.object().attr("dispose")();
  });
}

const char* GRBgeterrormsg(GRBenv* env) {
  const std::shared_ptr<Env> found = envs().find(env);
  return found == nullptr ? "" : found->message();
}

int GRBisgpusupported(GRBenv* env) {
  int supported = 0;
  onEnv(env, [&supported](Env& e) { supported = e.object().attr("isGPUSupported")().cast<bool>() ? 1 : 0; });
  return supported;
}

}  // extern "C"

}  // namespace bridge
