#include "bridge/parameter.h"

#include <fmt/format.h>

#include "bridge/call.h"
#include "bridge/values.h"

namespace py = pybind11;

namespace bridge {
namespace {

ParamType typeOf(py::handle type) {
  const PyObject* const object = type.ptr();
  if (object == reinterpret_cast<PyObject*>(&PyLong_Type)) return ParamType::kInt;
  if (object == reinterpret_cast<PyObject*>(&PyFloat_Type)) return ParamType::kDouble;
  return ParamType::kText;
}

}  // namespace

ParamInfo describeParam(Env& env, const char* name) {
  if (name == nullptr) return {};
  const py::object info = env.object().attr("_getParamInfo")(text(name));
  if (info.is_none()) return {};
  const auto items = info.cast<py::tuple>();
  return {typeOf(items[1]), items[2], items[3], items[4], items[5]};
}

ParamInfo requireParam(Env& env, const char* name, ParamType type) {
  ParamInfo info = describeParam(env, name);
  const char* const shown = name == nullptr ? "" : name;
  if (info.type == ParamType::kUnknown)
    throw Failure(grb::error::kUnknownParameter, fmt::format("Unknown parameter: {}", shown));
  if (info.type != type)
    throw Failure(grb::error::kUnknownParameter, fmt::format("Wrong type for parameter: {}", shown));
  return info;
}

}  // namespace bridge
