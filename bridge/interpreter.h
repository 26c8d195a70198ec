// The Python interpreter of the process.
#pragma once

#include <string>

namespace bridge {

/// What the start came to.
struct Interpreter {
  std::string failure;     ///< empty when Python runs, else a text for the user that says why not
  std::string executable;  ///< the Python in use
  std::string passedOver;  ///< see PythonChoice
};

/// Starts the interpreter at the first call; later calls only look. An interpreter that runs already (the host is a
/// Python program) is used as it is. It is never finalised: gurobipy keeps native state, and nobody can tell when the
/// last handle dies. Any thread may call this, with or without the lock of the interpreter.
const Interpreter& startInterpreter();

}  // namespace bridge
