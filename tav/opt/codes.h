#pragma once

#include <cstdint>

namespace tav::opt {

// What is known of the model after a solve. A limit or a suboptimal stop is `unknown`: whether there is a point is told
// by the number of solutions.
enum class SolutionStatus : int {
  optimal = 0,
  locallyOptimal = 1,
  infeasible = 2,
  locallyInfeasible = 3,
  unbounded = 4,
  infeasibleOrUnbounded = 5,
  unknown = 6
};

enum class BasisStatus : int { lower = 1, upper = 2, basic = 3, superbasic = 4 };

// How a solve ended, as AbstractSolver::solve returns it. Codes 9, 10 and 12 are never returned.
enum class Termination : std::int32_t {
  finished = 0,
  infeasible = 1,
  locallyInfeasible = 2,
  unbounded = 3,
  infeasibleOrUnbounded = 4,
  solutionLimit = 5,
  iterationLimit = 6,
  timeLimit = 7,
  nodeLimit = 8,
  numeric = 11,
  other = 13,
  interrupted = 14
};

// Why a solve ended, finer than Termination: a solver that can tell says so through AbstractSolverServices.
enum class StopReason : std::uint8_t {
  notRun,
  finished,
  suboptimal,
  iterations,
  nodes,
  time,
  solutions,
  cutoff,
  target,
  work,
  memory,
  numeric,
  interrupted
};

// Domain types of elements, by the numbers in blocks.
enum class VariableType : int { continuous = 0, integer = 1, semicontinuous = 2, semiinteger = 3 };
enum class RowType : int { greaterOrEqual = 0, lessOrEqual = 1, equal = 2 };
enum class ObjectiveSense : int { minimize = 0, maximize = 1 };
enum class SosType : int { one = 0, two = 1 };
// The value of the linked variable that switches a row on.
enum class LinkType : int { zero = 2, one = 3 };

}  // namespace tav::opt
