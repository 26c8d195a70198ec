// Facts about the library that need no environment.
#include "bridge/exports.h"
#include "bridge/gurobipy.h"
#include "grb/gurobi/constants.h"

namespace bridge {

extern "C" {

void GRBversion(int* majorP, int* minorP, int* technicalP) {
  // A loader asks before it makes an environment, and must get an answer where Python is missing too: the version that
  // this library serves. Once gurobipy is loaded, the library in it is asked; only the last number can differ, since
  // another gurobipy is refused.
  const bool loaded = gurobipyLoaded();
  if (majorP != nullptr) *majorP = loaded ? gurobipy().major : grb::kVersionMajor;
  if (minorP != nullptr) *minorP = loaded ? gurobipy().minor : grb::kVersionMinor;
  if (technicalP != nullptr) *technicalP = loaded ? gurobipy().technical : grb::kVersionTechnical;
}

char* GRBplatform() {
  static char name[] = "linux64";
  return name;
}

}  // extern "C"

}  // namespace bridge
