// Parameters: what is known about each name.
#pragma once

#include <pybind11/pybind11.h>

#include "bridge/env.h"

namespace bridge {

/// Types of parameters, as GRBgetparamtype gives them.
enum class ParamType { kUnknown = -1, kInt = 1, kDouble = 2, kText = 3 };

/// gurobipy's description of a parameter: name, type, value, minimum, maximum, default.
struct ParamInfo {
  ParamType type = ParamType::kUnknown;
  pybind11::object value, minimum, maximum, standard;
};

/// Asks gurobipy. The type is kUnknown, and the rest null, for an unknown name. Names are case-insensitive.
ParamInfo describeParam(Env& env, const char* name);

/// As describeParam, but throws Failure 10007 for an unknown name and for one of another type than `type`.
ParamInfo requireParam(Env& env, const char* name, ParamType type);

}  // namespace bridge
