// Reading and writing parameters, one by one and by file.
#include <cmath>
#include <cstring>

#include "bridge/call.h"
#include "bridge/exports.h"
#include "bridge/parameter.h"
#include "bridge/values.h"

namespace py = pybind11;

namespace bridge {
namespace {

/// gurobipy would set all parameters that match a pattern, truncate a float for an int parameter and take a text as a
/// request; so name and type are settled before it sees the value.
void setParam(Env& env, const char* name, ParamType type, const py::object& value) {
  requireParam(env, name, type);
  env.object().attr("setParam")(text(name), value);
}

/// The caller's buffer has grb::kStringParamSize bytes.
void copyText(py::handle value, char* out) {
  const std::string read = string(value);
  const std::size_t length = std::min(read.size(), grb::kStringParamSize - 1);
  std::memcpy(out, read.data(), length);
  out[length] = '\0';
}

}  // namespace

extern "C" {

int GRBgetintparam(GRBenv* env, const char* name, int* valueP) {
  return onEnv(env, [&](Env& e) { *valueP = integer(requireParam(e, name, ParamType::kInt).value); });
}

int GRBgetdblparam(GRBenv* env, const char* name, double* valueP) {
  return onEnv(env, [&](Env& e) { *valueP = number(requireParam(e, name, ParamType::kDouble).value); });
}

int GRBgetstrparam(GRBenv* env, const char* name, char* value) {
  return onEnv(env, [&](Env& e) { copyText(requireParam(e, name, ParamType::kText).value, value); });
}

int GRBsetintparam(GRBenv* env, const char* name, int value) {
  return onEnv(env, [&](Env& e) { setParam(e, name, ParamType::kInt, py::int_(value)); });
}

int GRBsetdblparam(GRBenv* env, const char* name, double value) {
  return onEnv(env, [&](Env& e) {
    // The library ignores what is not a number; gurobipy would put an infinity in its place.
    if (std::isnan(value))
      requireParam(e, name, ParamType::kDouble);
    else
      setParam(e, name, ParamType::kDouble, py::float_(value));
  });
}

int GRBsetstrparam(GRBenv* env, const char* name, const char* value) {
  return onEnv(env, [&](Env& e) {
    if (value != nullptr) setParam(e, name, ParamType::kText, text(value));
  });
}

int GRBgetintparaminfo(GRBenv* env, const char* name, int* valueP, int* minP, int* maxP, int* defP) {
  return onEnv(env, [&](Env& e) {
    const ParamInfo info = requireParam(e, name, ParamType::kInt);
    if (valueP != nullptr) *valueP = integer(info.value);
    if (minP != nullptr) *minP = integer(info.minimum);
    if (maxP != nullptr) *maxP = integer(info.maximum);
    if (defP != nullptr) *defP = integer(info.standard);
  });
}

int GRBgetdblparaminfo(GRBenv* env, const char* name, double* valueP, double* minP, double* maxP, double* defP) {
  return onEnv(env, [&](Env& e) {
    const ParamInfo info = requireParam(e, name, ParamType::kDouble);
    if (valueP != nullptr) *valueP = number(info.value);
    if (minP != nullptr) *minP = number(info.minimum);
    if (maxP != nullptr) *maxP = number(info.maximum);
    if (defP != nullptr) *defP = number(info.standard);
  });
}

int GRBgetstrparaminfo(GRBenv* env, const char* name, char* valueP, char* defP) {
  return onEnv(env, [&](Env& e) {
    const ParamInfo info = requireParam(e, name, ParamType::kText);
    if (valueP != nullptr) copyText(info.value, valueP);
    if (defP != nullptr) copyText(info.standard, defP);
  });
}

int GRBreadparams(GRBenv* env, const char* filename) {
  return onEnv(env, [&](Env& e) { e.object().attr("readParams")(path(filename)); });
}

int GRBwriteparams(GRBenv* env, const char* filename) {
  return onEnv(env, [&](Env& e) { e.object().attr("writeParams")(path(filename)); });
}

}  // extern "C"

}  // namespace bridge
