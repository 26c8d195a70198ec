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

// A point of the pool goes to this file; number counts from 1.
std::string poolPath(const std::string& stub, std::size_t number);

}  // namespace app
