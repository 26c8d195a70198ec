// Which Python the library starts.
#pragma once

#include <string>

namespace bridge {

/// A Python to start, or why there is none.
struct PythonChoice {
  std::string executable;  ///< empty when `failure` is set
  std::string failure;
  std::string passedOver;  ///< places that were preferred but have no gurobipy, separated by commas; for messages
};

/// The first of
///  1. the environment variable GRBLINK_PYTHON: an executable or the folder of a virtual environment; when it is set
///     nothing else is tried,
///  2. the virtual environment that VIRTUAL_ENV names, if gurobipy is installed in it,
///  3. the Python that the build configured (GRBLINK_DEFAULT_PYTHON), if gurobipy is installed beside it,
///  4. the Python whose interpreter this library is linked to, which may have gurobipy in a place of the system's or
///     the user's.
PythonChoice choosePython();

}  // namespace bridge
