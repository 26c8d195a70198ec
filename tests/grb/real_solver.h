#pragma once

#include "tests/grb/solver_fixture.h"

namespace grb {

/// Gurobi itself, through the bridge.
inline std::shared_ptr<const Library> realGurobi() {
  static const auto kLibrary = Library::open(GRBLINK_BRIDGE_PATH);
  return kLibrary;
}

class RealSolver : public SolverFixture {
 protected:
  RealSolver() : SolverFixture(realGurobi()) {}
};

}  // namespace grb
