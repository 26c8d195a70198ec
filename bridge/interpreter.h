// The Python interpreter of the process.
#pragma once

#include <string>

namespace bridge {

/// Starts the interpreter at the first call; later calls only look. An interpreter that runs already (the host is a
/// Python program) is used as it is. It is never finalised: gurobipy keeps native state, and nobody can tell when the
/// last handle dies.
///
/// Returns the empty string when Python runs, else a text for the user that says why not. Any thread may call it, with
/// or without the lock of the interpreter.
const std::string& startInterpreter();

/// Name of the Python in use, for messages: the executable.
const std::string& interpreterName();

}  // namespace bridge
