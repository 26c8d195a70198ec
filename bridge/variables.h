// Adding variables.
#pragma once

#include <pybind11/pybind11.h>

namespace bridge {

/// `count` variables, as the C functions describe them; any array may be NULL and stands for the defaults then.
struct VariableData {
  int count;
  const double* obj;
  const double* lb;
  const double* ub;
  const char* vtype;
  char** names;
};

/// Queues them in gurobipy's model. Returns an iterable of the new Var objects in order.
pybind11::object addVariables(const pybind11::object& model, const VariableData& data);

}  // namespace bridge
