#pragma once

#include <cstddef>
#include <optional>

#include "kavo/result/results.h"

namespace kavo {

// Why the run stopped and what is known, in words that last for the life of the program.
struct Outcome {
  const char* status;       // "optimal", "infeasible", ...
  const char* termination;  // "finished", "time_limit", ...
  int solCode;              // solve_result_num of the AMPL protocol
  const char* message;      // "optimal solution", "time limit, feasible solution", ...
};

// The one table from (stop reason, solution status, is there a point) to words and codes; docs/results.md shows it.
// signalled: it was a signal that interrupted the run.
Outcome outcome(const Answer& answer, bool signalled);
inline Outcome outcome(const Results& results) { return outcome(results, results.signalled); }

// Row `index` of that table without point or with one, for a list of all codes; nothing beyond the last.
std::optional<Outcome> outcomeRow(std::size_t index);

}  // namespace kavo
