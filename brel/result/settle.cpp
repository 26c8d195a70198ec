#include "brel/result/settle.h"

#include <cmath>
#include <limits>
#include <string>

#include "brel/host.h"
#include "brel/rewrite/sides.h"
#include "tav/opt/quantities.h"
#include "tav/opt/tags.h"

namespace brel::result {
namespace {

constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

void note(trpRec* host, const std::string& line) { kavo_link_note(host, line.c_str()); }

// No point: what the solver holds, or says of one, is infinite.
void leaveOut(kavo_finish& finish) {
  finish.solutions = 0;
  finish.objective = finish.bound = finish.gap = kUnknown;
}

// A solver may end at values that it takes for infinite, and call that optimal.
void settleInfinity(Reader& reader, trpRec* host, kavo_finish& finish) {
  if (finish.solutions == 0) return;
  const double most = finish.status == KAVO_UNBOUNDED ? rewrite::kUserInfinity : kInfiniteValue;
  if (!isInfinite(finish.objective, reader.columns(), most)) return;
  leaveOut(finish);
  if (finish.status == KAVO_OPTIMAL || finish.status == KAVO_LOCALLY_OPTIMAL) finish.status = KAVO_UNBOUNDED;
  note(host, "the solver ended at infinite values, which are no point of the model and are not given");
}

bool hasCutoff(tav::opt::AbstractSolver& solver) {
  const auto cutoff =
      solver.makeModelAttributes(tav::opt::tag::kSolver, {})->get(tav::opt::ModelAttribute::cutoff).as<double>();
  return cutoff.solutionCount() > 0 && std::abs(cutoff.get()) < rewrite::kUserInfinity;
}

// A search for a conflict in place of a solve passes over nothing.
bool hasSearched(tav::opt::AbstractSolver& solver) {
  constexpr int kInPlaceOfSolving = 2;
  const auto own = solver.makeModelAttributes(solver.shortName(), {});
  const auto iis = own ? own->get("iis").as<int>() : tav::attr::Item<int>();
  return iis.solutionCount() == 0 || iis.get() != kInPlaceOfSolving;
}

// A search passes over what is not better than the cutoff, as if it were no point of the model.
void settleCutoff(trpRec* host, tav::opt::AbstractSolver& solver, kavo_finish& finish) {
  const auto* services = dynamic_cast<const tav::opt::AbstractSolverServices*>(&solver);
  const bool isOpen = isInfeasible(finish.status) || finish.status == KAVO_INFEASIBLE_OR_UNBOUNDED;
  if (isOpen && services != nullptr && services->isSearch() && hasSearched(solver) && hasCutoff(solver)) {
    if (finish.status == KAVO_INFEASIBLE_OR_UNBOUNDED) {
      return note(host, "with a cutoff it may also be neither of the two: that no solution is better than it");
    }
    finish.status = KAVO_UNKNOWN;
    finish.stop = KAVO_STOP_CUTOFF;
    if (services->conflict()) {
      note(host, "the conflict (IIS) may be one with the cutoff, not of the model alone, and is not given");
    }
  }
  if (finish.stop == KAVO_STOP_CUTOFF) finish.bound = finish.gap = kUnknown;  // the solver's is beyond the cutoff
}

void tellUndecided(trpRec* host, const kavo_finish& finish) {
  if (finish.status == KAVO_INFEASIBLE_OR_UNBOUNDED) {
    note(host, "which of the two was not decided; dualreductions=0 lets the solver find out");
  }
  if (finish.status == KAVO_UNBOUNDED && finish.solutions == 0) {
    note(host, "unbounded: there is a direction that improves the objective without end, but no point was looked for");
  }
}

// The cost of a relaxation has 0 as a bound: only once it is known, and the model's own objective is looked at, can
// that be unbounded.
void settleRelaxation(Reader& reader, trpRec* host, kavo_finish& finish) {
  const bool isCostKnown = std::abs(finish.relaxation) < rewrite::kUserInfinity;
  if (!isCostKnown) finish.relaxation = kUnknown;
  if (finish.status == KAVO_INFEASIBLE_OR_UNBOUNDED) finish.status = isCostKnown ? KAVO_UNBOUNDED : KAVO_INFEASIBLE;
  const bool isUnbounded = finish.status == KAVO_UNBOUNDED;
  const bool isFar = finish.solutions > 0 && isInfinite(finish.objective, reader.columns(), rewrite::kUserInfinity);
  if (isUnbounded || isFar) {
    finish.status = KAVO_UNBOUNDED;
    leaveOut(finish);
    note(host, isUnbounded ? "the objective of the relaxed model is unbounded, so there is no point"
                           : "the solve of the relaxed model ended at infinite values, which are no point");
  } else if (!isInfeasible(finish.status)) {
    finish.status = KAVO_UNKNOWN;
  }
}

}  // namespace

bool isInfeasible(int status) { return status == KAVO_INFEASIBLE || status == KAVO_LOCALLY_INFEASIBLE; }

void settle(Reader& reader, trpRec* host, tav::opt::AbstractSolver& solver, kavo_finish& finish) {
  const auto* services = dynamic_cast<const tav::opt::AbstractSolverServices*>(&solver);
  if (services != nullptr && !services->structureIntact()) {
    finish.relaxation = services->relaxation().value_or(kUnknown);
    return settleRelaxation(reader, host, finish);
  }
  const bool hadPoint = finish.solutions > 0;
  settleInfinity(reader, host, finish);
  settleCutoff(host, solver, finish);
  if (!hadPoint) tellUndecided(host, finish);
}

}  // namespace brel::result
