#include "bridge/gurobipy.h"

#include <fmt/format.h>

#include <atomic>

#include "bridge/gil.h"
#include "bridge/interpreter.h"
#include "bridge/log.h"
#include "grb/gurobi/constants.h"

namespace py = pybind11;

namespace bridge {
namespace {

std::atomic<const Gurobipy*> loaded{nullptr};

const std::string& none() {
  static const std::string* const kNone = new std::string;
  return *kNone;
}

std::string unusable(const std::string& reason) {
  const Interpreter& python = startInterpreter();
  const std::string others = python.passedOver.empty() ? "" : fmt::format(", nor is it in {}", python.passedOver);
  return fmt::format(
      "gurobipy cannot be used by Python {}: {}{}. Run in that Python: pip install gurobipy=={}.{}.{} "
      "(or name another Python by GRBLINK_PYTHON)",
      python.executable, reason, others, grb::kVersionMajor, grb::kVersionMinor, grb::kVersionTechnical);
}

/// Some of what the C functions need has no public name in gurobipy. A package without it is refused as a whole: better
/// than a library that works until the first such call.
void requirePrivateNames(const Gurobipy& package) {
  for (const char* name : {"_paramlist", "_getParamInfo", "isGPUSupported", "tuneModels"})
    if (!py::hasattr(package.environment, name)) throw py::attribute_error(fmt::format("Env.{} is missing", name));
}

const Gurobipy* import() {
  auto package = std::make_unique<Gurobipy>();
  const py::module_ top = py::module_::import("gurobipy");
  package->environment = top.attr("Env");
  package->model = top.attr("Model");
  package->linear = top.attr("LinExpr");
  package->quadratic = top.attr("QuadExpr");
  package->column = top.attr("Column");
  package->gurobiError = top.attr("GurobiError");
  package->read = top.attr("read");
  package->attributeInfo = py::module_::import("gurobipy._attrutil").attr("_getattrinfo");
  const py::tuple version = top.attr("gurobi").attr("version")();
  package->major = version[0].cast<int>();
  package->minor = version[1].cast<int>();
  package->technical = version[2].cast<int>();
  requirePrivateNames(*package);
  installLogHandler();
  return package.release();  // for the rest of the process: no Python object may die after main
}

/// pybind11 keeps the Python state of the thread that first uses it, and goes back to it each time that thread drops an
/// exception. The state must hence outlive the call that made it, also on a thread that Python does not know: its
/// second count is never given back. With the lock held.
void startPybind() {
  static bool done = false;
  if (done) return;
  done = true;
  PyGILState_Ensure();
  const py::gil_scoped_acquire firstUse;
}

std::string tryImport() {
  try {
    startPybind();
    const Gurobipy* package = import();
    if (package->major != grb::kVersionMajor || package->minor != grb::kVersionMinor)
      return unusable(fmt::format("its version {}.{}.{} is not the one that this library serves", package->major,
                                  package->minor, package->technical));
    loaded.store(package);
    return {};
  } catch (py::error_already_set& e) {
    return unusable(py::str(e.value()).cast<std::string>());
  } catch (const std::exception& e) {
    return unusable(e.what());
  }
}

}  // namespace

const std::string& loadGurobipy() {
  if (loaded.load() != nullptr) return none();
  if (const Interpreter& python = startInterpreter(); !python.failure.empty()) return python.failure;
  const Gil gil;  // Guards the rest. No mutex: the import lets go of this lock in the middle.
  static std::string* failure = nullptr;
  if (loaded.load() != nullptr) return none();
  if (failure == nullptr) {
    std::string text = tryImport();
    if (text.empty()) return none();
    if (failure == nullptr) failure = new std::string(std::move(text));
  }
  return *failure;
}

bool gurobipyLoaded() { return loaded.load() != nullptr; }

const Gurobipy& gurobipy() { return *loaded.load(); }

}  // namespace bridge
