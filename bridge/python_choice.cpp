#include "bridge/python_choice.h"

#include <Python.h>
#include <fmt/format.h>

#include <cstdlib>
#include <filesystem>

namespace bridge {
namespace {

namespace fs = std::filesystem;

/// The executable that `path` means: itself, or bin/python of the environment. Empty if there is none.
fs::path executableOf(const fs::path& path) {
  std::error_code ignored;
  if (fs::is_regular_file(path, ignored)) return path;
  const fs::path inside = path / "bin" / "python";
  return fs::is_regular_file(inside, ignored) ? inside : fs::path{};
}

bool hasGurobipy(const fs::path& executable) {
  // Not resolved: the executable of a virtual environment is a link that leads out of it.
  const fs::path root = executable.parent_path().parent_path();
  const std::string version = fmt::format("python{}.{}", PY_MAJOR_VERSION, PY_MINOR_VERSION);
  std::error_code ignored;
  return fs::is_directory(root / "lib" / version / "site-packages" / "gurobipy", ignored);
}

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string{} : std::string{value};
}

}  // namespace

PythonChoice choosePython() {
  if (const std::string wanted = variable("GRBLINK_PYTHON"); !wanted.empty()) {
    const fs::path executable = executableOf(wanted);
    if (!executable.empty()) return {executable.string(), {}, {}};
    return {{},
            fmt::format("GRBLINK_PYTHON is '{}', which is neither a Python executable nor a virtual environment. Name "
                        "a Python {}.{} in which you ran: pip install gurobipy",
                        wanted, PY_MAJOR_VERSION, PY_MINOR_VERSION),
            {}};
  }
  std::string passedOver;
  for (const std::string& candidate : {variable("VIRTUAL_ENV"), std::string{GRBLINK_DEFAULT_PYTHON}}) {
    if (candidate.empty()) continue;
    const fs::path executable = executableOf(candidate);
    if (!executable.empty() && hasGurobipy(executable)) return {executable.string(), {}, {}};
    passedOver += (passedOver.empty() ? "" : ", ") + candidate;
  }
  return {GRBLINK_BASE_PYTHON, {}, passedOver};
}

}  // namespace bridge
