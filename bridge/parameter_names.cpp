// Which parameters there are.
#include <fmt/format.h>

#include <string>
#include <vector>

#include "bridge/call.h"
#include "bridge/exports.h"
#include "bridge/parameter.h"
#include "bridge/values.h"

namespace py = pybind11;

namespace bridge {
namespace {

/// All names in the library's order, for the life of the process: callers keep the pointers.
std::vector<std::string>& allNames(Env& env) {
  static std::vector<std::string>* names = nullptr;  // the interpreter's lock guards it
  if (names == nullptr) {
    std::vector<std::string> read;
    const py::list listed = env.object().attr("_paramlist")("*");
    for (const py::handle name : listed) read.push_back(string(name));
    names = new std::vector<std::string>(std::move(read));
  }
  return *names;
}

}  // namespace

extern "C" {

int GRBgetnumparams(GRBenv* env) {
  int count = 0;
  onEnv(env, [&](Env& e) { count = static_cast<int>(allNames(e).size()); });
  return count;
}

int GRBgetparamname(GRBenv* env, int i, char** nameP) {
  return onEnv(env, [&](Env& e) {
    std::vector<std::string>& names = allNames(e);
    if (i >= static_cast<int>(names.size()))
      throw Failure(grb::error::kInvalidArgument, "Invalid argument value for required parameter");
    *nameP = i < 0 ? nullptr : names[static_cast<std::size_t>(i)].data();
  });
}

int GRBgetparamtype(GRBenv* env, const char* name) {
  ParamType type = ParamType::kUnknown;
  onEnv(env, [&](Env& e) { type = describeParam(e, name).type; });
  return static_cast<int>(type);
}

}  // extern "C"

}  // namespace bridge
