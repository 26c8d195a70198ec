#pragma once

#include <optional>
#include <string>

#include "tav/opt/solver_services.h"

namespace grb {

// What a solve found besides a point.
struct Outcome {
  bool hasSolved = false;   // false when only something else than a solve was asked for
  bool isCutShort = false;  // the search for a conflict was stopped
  std::string lostFile;     // one that was to be written after the solve, and why it was not
  std::optional<tav::opt::Conflict> conflict;
  std::string conflictFailure;  // why there is none although it was asked for
  // Gurobi's status of the solve, where a failed search for a conflict has put another in its place. What Gurobi holds
  // is no answer of that solve then.
  std::optional<int> status;
  std::optional<double> relaxation;
  bool relaxationIsObjective = false;  // the relaxed model's objective is what the relaxation costs
  bool isRelaxationCutShort = false;   // the cheapest relaxation was to be found first, and was not
  std::optional<double> condition;
  std::optional<double> exactCondition;
};

}  // namespace grb
