// General constraints over lists of variables, indicators and expression trees.
#include <pybind11/pybind11.h>

#include "bridge/adding.h"
#include "bridge/exports.h"
#include "bridge/values.h"

namespace py = pybind11;

namespace bridge {
namespace {

template <class... Args>
void add(Model& m, const char* method, Args&&... args) {
  m.elements(Kind::kGenConstr).append(m.object().attr(method)(std::forward<Args>(args)...));
}

/// The data of an expression tree: gurobipy wants the variable itself where C has its index.
py::list nodeData(Model& m, int count, const int* opcode, const double* data) {
  py::list list = doubleList(count, data);
  for (int i = 0; i < count; ++i) {
    if (opcode[i] != grb::opcode::kVariable) continue;
    const auto index = static_cast<int>(data[i]);
    if (index != data[i]) throw Failure(grb::error::kInvalidArgument, "A variable's index must be a whole number");
    list[i] = m.vars().at(index);
  }
  return list;
}

}  // namespace

extern "C" {

int GRBaddgenconstrMax(GRBmodel* model, const char* name, int resvar, int nvars, const int* vars, double constant) {
  return onAdd(model, [&](Model& m) {
    add(m, "addGenConstrMax", m.vars().at(resvar), m.vars().pick(nvars, vars), constant, text(name));
  });
}

int GRBaddgenconstrMin(GRBmodel* model, const char* name, int resvar, int nvars, const int* vars, double constant) {
  return onAdd(model, [&](Model& m) {
    add(m, "addGenConstrMin", m.vars().at(resvar), m.vars().pick(nvars, vars), constant, text(name));
  });
}

int GRBaddgenconstrAbs(GRBmodel* model, const char* name, int resvar, int argvar) {
  return onAdd(model,
               [&](Model& m) { add(m, "addGenConstrAbs", m.vars().at(resvar), m.vars().at(argvar), text(name)); });
}

int GRBaddgenconstrAnd(GRBmodel* model, const char* name, int resvar, int nvars, const int* vars) {
  return onAdd(
      model, [&](Model& m) { add(m, "addGenConstrAnd", m.vars().at(resvar), m.vars().pick(nvars, vars), text(name)); });
}

int GRBaddgenconstrOr(GRBmodel* model, const char* name, int resvar, int nvars, const int* vars) {
  return onAdd(
      model, [&](Model& m) { add(m, "addGenConstrOr", m.vars().at(resvar), m.vars().pick(nvars, vars), text(name)); });
}

int GRBaddgenconstrNorm(GRBmodel* model, const char* name, int resvar, int nvars, const int* vars, double which) {
  return onAdd(model, [&](Model& m) {
    add(m, "addGenConstrNorm", m.vars().at(resvar), m.vars().pick(nvars, vars), which, text(name));
  });
}

int GRBaddgenconstrIndicator(GRBmodel* model, const char* name, int binvar, int binval, int nvars, const int* vars,
                             const double* vals, char sense, double rhs) {
  return onAdd(model, [&](Model& m) {
    const py::object row = gurobipy().linear(doubleList(nvars, vals), m.vars().pick(nvars, vars));
    add(m, "addGenConstrIndicator", m.vars().at(binvar), binval, row, senseOf(sense), rhs, text(name));
  });
}

int GRBaddgenconstrNL(GRBmodel* model, const char* name, int resvar, int nnodes, const int* opcode, const double* data,
                      const int* parent) {
  return onAdd(model, [&](Model& m) {
    add(m, "addGenConstrNLAdv", m.vars().at(resvar), intList(nnodes, opcode), nodeData(m, nnodes, opcode, data),
        intList(nnodes, parent), text(name));
  });
}

}  // extern "C"

}  // namespace bridge
