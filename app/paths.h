#pragma once

#include <string>

#include "app/arguments.h"

namespace app {

// Where a run reads and writes; "" for what is not written.
struct Paths {
  std::string nl;   // the .nl file; "" when the model is none
  std::string sol;  // the solution file: AMPL's form for a .nl file or the AMPL protocol, else the point form
  bool amplForm = true;
};

// The model's path without its ending names the solution file, in the same folder, unless the arguments name another.
Paths pathsOf(const Arguments& arguments);

// Throws Failure unless a file can be written at `path` without overwriting the model. "" is fine.
void checkOutput(const std::string& path, const std::string& model);

}  // namespace app
