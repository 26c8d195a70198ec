// Making, reading, writing and freeing models.
#include <pybind11/pybind11.h>

#include "bridge/call.h"
#include "bridge/exports.h"
#include "bridge/values.h"
#include "bridge/variables.h"

namespace py = pybind11;
using namespace py::literals;

namespace bridge {

extern "C" {

int GRBnewmodel(GRBenv* env, GRBmodel** modelP, const char* name, int numvars, double* obj, double* lb, double* ub,
                char* vtype, char** varnames) {
  if (modelP == nullptr) return grb::error::kNullArgument;
  *modelP = nullptr;
  return onEnv(env, [&](Env& e) {
    const py::object object = gurobipy().model(text(name), "env"_a = e.object());
    const VariableData data{numvars, obj, lb, ub, vtype, varnames};
    addVariables(object, data);
    object.attr("update")();  // a new model has its variables from the start
    *modelP = Model::adopt(object)->handle();
  });
}

int GRBreadmodel(GRBenv* env, const char* filename, GRBmodel** modelP) {
  if (modelP == nullptr) return grb::error::kNullArgument;
  *modelP = nullptr;
  return onEnv(
      env, [&](Env& e) { *modelP = Model::adopt(gurobipy().read(path(filename), "env"_a = e.object()))->handle(); });
}

int GRBfreemodel(GRBmodel* model) {
  if (model == nullptr) return 0;
  return onModel(model, [](Model& m) {
    models().remove(m.handle());
    envs().remove(m.envHandle());
    m.dispose();
  });
}

GRBenv* GRBgetenv(GRBmodel* model) {
  const std::shared_ptr<Model> found = models().find(model);
  return found == nullptr ? nullptr : found->envHandle();
}

int GRBupdatemodel(GRBmodel* model) {
  return onModel(model, [](Model& m) { m.object().attr("update")(); });
}

int GRBwrite(GRBmodel* model, const char* filename) {
  return onModel(model, [&](Model& m) { m.object().attr("write")(path(filename)); });
}

}  // extern "C"

}  // namespace bridge
