#include "bridge/interpreter.h"

#include <Python.h>
#include <dlfcn.h>
#include <fmt/format.h>

#include <mutex>
#include <string_view>

#include "bridge/python_choice.h"

namespace bridge {
namespace {

struct State {
  std::once_flag once;
  std::string name;
  std::string failure;
};

State& state() {
  static State* const kState = new State;  // Never destroyed: calls may come during the exit of the process.
  return *kState;
}

/// Makes the symbols of libpython visible to extension modules. A host that loads this library with RTLD_LOCAL keeps
/// libpython local as well, and each extension module would then fail on its first undefined symbol.
void promoteLibpython() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(&Py_InitializeFromConfig), &info) != 0)
    dlopen(info.dli_fname, RTLD_NOW | RTLD_GLOBAL | RTLD_NOLOAD);
}

/// Locale and standard streams belong to the host: Python must leave them as they are.
PyStatus preinitialise() {
  PyPreConfig config;
  PyPreConfig_InitPythonConfig(&config);
  config.configure_locale = 0;
  config.coerce_c_locale = 0;
  config.utf8_mode = 1;
  config.parse_argv = 0;
  return Py_PreInitialize(&config);
}

PyStatus initialise(const std::string& executable) {
  PyConfig config;
  PyConfig_InitPythonConfig(&config);
  config.install_signal_handlers = 0;
  config.parse_argv = 0;
  config.configure_c_stdio = 0;
  config.buffered_stdio = 0;  // so that Gurobi's lines and the host's own keep their order
  PyStatus status = PyConfig_SetBytesString(&config, &config.executable, executable.c_str());
  if (PyStatus_Exception(status) == 0) status = Py_InitializeFromConfig(&config);
  PyConfig_Clear(&config);
  return status;
}

void start(State& s) {
  if (Py_IsInitialized() != 0) {
    s.name = "of this process";
    return;
  }
  const PythonChoice choice = choosePython();
  s.name = choice.executable;
  if (!choice.failure.empty()) {
    s.failure = choice.failure;
    return;
  }
  promoteLibpython();
  PyStatus status = preinitialise();
  if (PyStatus_Exception(status) == 0) status = initialise(choice.executable);
  if (PyStatus_Exception(status) != 0) {
    s.failure = fmt::format(
        "Python {} cannot be started: {}. Name another Python {}.{} by GRBLINK_PYTHON and run in "
        "it: pip install gurobipy",
        s.name, status.err_msg == nullptr ? "no reason given" : status.err_msg, PY_MAJOR_VERSION, PY_MINOR_VERSION);
    return;
  }
  PyEval_SaveThread();  // The lock is taken anew by each call, on whichever thread it comes.
}

/// The running interpreter may be the host's and of another version than the headers this library was built with.
void checkVersion(State& s) {
  const std::string_view running = Py_GetVersion();
  const std::string built = fmt::format("{}.{}.", PY_MAJOR_VERSION, PY_MINOR_VERSION);
  if (running.substr(0, built.size()) != built)
    s.failure = fmt::format("This process runs Python {}; the gurobipy bridge is built for Python {}.{}",
                            running.substr(0, running.find(' ')), PY_MAJOR_VERSION, PY_MINOR_VERSION);
}

}  // namespace

const std::string& startInterpreter() {
  State& s = state();
  std::call_once(s.once, [&s] {
    start(s);
    if (s.failure.empty()) checkVersion(s);
  });
  return s.failure;
}

const std::string& interpreterName() { return state().name; }

}  // namespace bridge
