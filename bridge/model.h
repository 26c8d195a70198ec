// What stands behind a GRBmodel.
#pragma once

#include <pybind11/pybind11.h>

#include <array>
#include <memory>
#include <string>

#include "bridge/elements.h"
#include "bridge/env.h"
#include "bridge/handles.h"

namespace bridge {

/// A gurobipy model with its elements, its own environment and the caller's callbacks. To be used, and destroyed, with
/// the lock of the interpreter held.
class Model {
 public:
  using Function = int (*)(GRBmodel* model, void* cbdata, int where, void* usrdata);
  using LogFunction = int (*)(char* msg, void* logdata);

  struct Callback {
    Function function = nullptr;
    void* data = nullptr;
    unsigned int wheres = 0;
  };
  struct LogCallback {
    LogFunction function = nullptr;
    void* data = nullptr;
  };

  /// gurobipy's methods that are called often, bound to this model.
  struct Methods {
    pybind11::object addVar, addLConstr, chgCoeff, getAttr, setAttr;
  };

  /// Takes gurobipy's model under a new handle, with an environment handle of its own, and makes both handles live.
  static std::shared_ptr<Model> adopt(pybind11::object object);

  Model(GRBmodel* handle, GRBenv* envHandle, std::shared_ptr<Env> env);

  GRBmodel* handle() const { return handle_; }
  GRBenv* envHandle() const { return envHandle_; }
  Env& env() { return *env_; }
  const pybind11::object& object() const { return object_; }
  const Methods& methods() const { return methods_; }

  Elements& elements(Kind kind) { return elements_[static_cast<std::size_t>(kind)]; }
  Elements& vars() { return elements(Kind::kVar); }
  Elements& constrs() { return elements(Kind::kConstr); }

  /// Works on `object` from now on: the model's environment becomes that of `object`, and its elements are read.
  void setObject(pybind11::object object);

  /// Reads all elements anew, after something in Gurobi changed their number.
  void readElements();

  /// An int attribute of the whole model.
  int count(const char* attribute) const;

  /// Drops all Python objects and disposes of gurobipy's model.
  void dispose();

  Callback callback;
  LogCallback logCallback;

  /// The text that GRBgetstrattr or GRBgetstrattrelement gave out last.
  std::string lastText;

 private:
  GRBmodel* handle_;
  GRBenv* envHandle_;
  std::shared_ptr<Env> env_;
  pybind11::object object_;
  Methods methods_;
  std::array<Elements, kNumKinds> elements_;
};

}  // namespace bridge
