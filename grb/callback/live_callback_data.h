#pragma once

#include "grb/gurobi/types.h"

namespace grb {

// The callback that is being told right now; empty (null, null, -1) outside one.
struct LiveCallbackData {
  GRBmodel* model = nullptr;
  void* cbdata = nullptr;
  int where = -1;
};

}  // namespace grb
