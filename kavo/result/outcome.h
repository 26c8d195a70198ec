#pragma once

#include <string>
#include <string_view>

#include "kavo/result/results.h"

namespace kavo {

// Why the run stopped and what is known, in words.
struct Outcome {
  std::string_view status;       // "optimal", "infeasible", ...
  std::string_view termination;  // "finished", "time limit", ...
  int solCode = 500;             // solve_result_num of the AMPL protocol
  std::string_view message;      // "optimal solution", "time limit, feasible solution", ...
};

// The one table from (stop reason, solution status, is there a point) to words and codes; docs/results.md shows it.
Outcome outcome(const Results& results);

}  // namespace kavo
