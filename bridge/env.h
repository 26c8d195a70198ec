// What stands behind a GRBenv.
#pragma once

#include <pybind11/pybind11.h>

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "grb/gurobi/types.h"

namespace bridge {

class Failure;
class Model;

/// A gurobipy environment and the text of the last failure on it: a base environment, or the one of a model, which dies
/// with the model.
///
/// An environment made while Python or gurobipy cannot be used has no Python object. It exists all the same, so that
/// the caller can read why from GRBgeterrormsg: each call on it fails with 10009.
class Env {
 public:
  /// An environment without a Python object. Takes the interpreter's lock itself when it is destroyed.
  static std::shared_ptr<Env> make();

  /// gurobipy's Env. Throws Failure 10009 when there is none.
  const pybind11::object& object() const;
  bool hasObject() const { return static_cast<bool>(object_); }
  void setObject(pybind11::object object) { object_ = std::move(object); }

  /// Why there is no Python object: the text of every failure from now on.
  void setUnusable(std::string reason);

  /// The model whose environment this is; null for a base environment. Its log callback hears what this environment
  /// says.
  std::weak_ptr<Model> model;

  /// Text of the last failure: one buffer for the life of the environment, since callers may keep the pointer.
  const char* message() const { return message_.data(); }
  void setMessage(std::string_view text);

  /// Keeps the text of `failure` and returns its code.
  int fail(const Failure& failure);

 private:
  pybind11::object object_;
  std::string unusable_;
  std::array<char, 2048> message_{};
};

}  // namespace bridge
