#include "bridge/interpreter.h"

#include <Python.h>
#include <dlfcn.h>
#include <fmt/format.h>

#include <mutex>
#include <string_view>

#include "bridge/python_choice.h"

namespace bridge {
namespace {

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

void start(Interpreter& s) {
  if (Py_IsInitialized() != 0) {
    s.executable = "of this process";
    return;
  }
  const PythonChoice choice = choosePython();
  s = {choice.failure, choice.executable, choice.passedOver};
  if (!s.failure.empty()) return;
  promoteLibpython();
  PyStatus status = preinitialise();
  if (PyStatus_Exception(status) == 0) status = initialise(choice.executable);
  if (PyStatus_Exception(status) != 0) {
    s.failure = fmt::format(
        "Python {} cannot be started: {}. Name another Python {}.{} by GRBLINK_PYTHON and run in "
        "it: pip install gurobipy",
        s.executable, status.err_msg == nullptr ? "no reason given" : status.err_msg, PY_MAJOR_VERSION,
        PY_MINOR_VERSION);
    return;
  }
  PyEval_SaveThread();  // The lock is taken anew by each call, on whichever thread it comes.
}

/// The running interpreter may be the host's and of another version than the headers this library was built with.
void checkVersion(Interpreter& s) {
  const std::string_view running = Py_GetVersion();
  const std::string built = fmt::format("{}.{}.", PY_MAJOR_VERSION, PY_MINOR_VERSION);
  if (!running.starts_with(built))
    s.failure = fmt::format("This process runs Python {}; the gurobipy bridge is built for Python {}.{}",
                            running.substr(0, running.find(' ')), PY_MAJOR_VERSION, PY_MINOR_VERSION);
}

}  // namespace

const Interpreter& startInterpreter() {
  static std::once_flag once;
  static auto* const kInterpreter = new Interpreter;  // never destroyed: calls may come while the process exits
  std::call_once(once, [] {
    start(*kInterpreter);
    if (kInterpreter->failure.empty()) checkVersion(*kInterpreter);
  });
  return *kInterpreter;
}

}  // namespace bridge
