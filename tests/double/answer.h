// What the double answers: Answer<function>::run takes the state and the arguments. Functions without an entry of their
// own add an element, if they are named in addedKind, and return 0.
#pragma once

#include <string>
#include <utility>

#include "grb/gurobi/api.h"
#include "grb/gurobi/constants.h"
#include "tests/double/handles.h"

namespace gurobi_double {

using grb::Fn;

inline int failed(GRBenv* env, int code, std::string message) {
  env->message = std::move(message);
  return code;
}
inline int failed(GRBmodel* model, int code, std::string message) {
  return failed(&model->env, code, std::move(message));
}

/// The kind of element that a function adds one of; kModel: none.
constexpr Kind addedKind(Fn function) {
  if (function == Fn::GRBaddvar) return Kind::kVar;
  if (function == Fn::GRBaddconstr) return Kind::kRow;
  if (function == Fn::GRBaddqconstr) return Kind::kQRow;
  return function >= Fn::GRBaddgenconstrMax && function <= Fn::GRBaddgenconstrTan ? Kind::kGen : Kind::kModel;
}

/// Whether a failure of the function throws the queue away.
constexpr bool isAdding(Fn function) {
  return addedKind(function) != Kind::kModel || function == Fn::GRBaddvars || function == Fn::GRBaddsos ||
         function == Fn::GRBaddqpterms;
}

inline void queue(GRBmodel* model, Kind kind, int number = 1) { model->queued[static_cast<int>(kind)] += number; }

template <Fn kFn>
struct Answer {
  template <typename... Args>
  static int run(State&, GRBmodel* model, const Args&...) {
    if constexpr (addedKind(kFn) != Kind::kModel) queue(model, addedKind(kFn));
    return 0;
  }
};

}  // namespace gurobi_double
