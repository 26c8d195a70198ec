#pragma once

#include <optional>

#include "tav/opt/solver_services.h"

namespace grb {

// What a solve found besides a point.
struct Outcome {
  bool hasSolved = false;  // false when only something else than a solve was asked for
  std::optional<tav::opt::Conflict> conflict;
  std::optional<double> relaxation;
  bool relaxationIsObjective = false;  // the relaxed model's objective is what the relaxation costs
  std::optional<double> condition;
  std::optional<double> exactCondition;
};

}  // namespace grb
