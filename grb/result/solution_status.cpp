#include "grb/result/solution_status.h"

#include <array>
#include <cstdint>

#include "grb/gurobi/callback_constants.h"
#include "grb/gurobi/constants.h"

namespace grb {
namespace {

using Known = tav::opt::SolutionStatus;
using Stop = tav::opt::StopReason;
using End = tav::opt::Termination;

struct Meaning {
  Known known;
  Stop stop;
  End end;
};

// By Gurobi's status. Gurobi numbers infeasible-or-unbounded before unbounded, the framework after it.
constexpr std::array<Meaning, 20> kMeanings{{
    /*  0 none               */ {Known::unknown, Stop::notRun, End::other},
    /*  1 LOADED             */ {Known::unknown, Stop::notRun, End::finished},
    /*  2 OPTIMAL            */ {Known::optimal, Stop::finished, End::finished},
    /*  3 INFEASIBLE         */ {Known::infeasible, Stop::finished, End::infeasible},
    /*  4 INF_OR_UNBD        */ {Known::infeasibleOrUnbounded, Stop::finished, End::infeasibleOrUnbounded},
    /*  5 UNBOUNDED          */ {Known::unbounded, Stop::finished, End::unbounded},
    /*  6 CUTOFF             */ {Known::unknown, Stop::cutoff, End::other},
    /*  7 ITERATION_LIMIT    */ {Known::unknown, Stop::iterations, End::iterationLimit},
    /*  8 NODE_LIMIT         */ {Known::unknown, Stop::nodes, End::nodeLimit},
    /*  9 TIME_LIMIT         */ {Known::unknown, Stop::time, End::timeLimit},
    /* 10 SOLUTION_LIMIT     */ {Known::unknown, Stop::solutions, End::solutionLimit},
    /* 11 INTERRUPTED        */ {Known::unknown, Stop::interrupted, End::interrupted},
    /* 12 NUMERIC            */ {Known::unknown, Stop::numeric, End::numeric},
    /* 13 SUBOPTIMAL         */ {Known::unknown, Stop::suboptimal, End::finished},
    /* 14 INPROGRESS         */ {Known::unknown, Stop::notRun, End::other},
    /* 15 USER_OBJ_LIMIT     */ {Known::unknown, Stop::target, End::other},
    /* 16 WORK_LIMIT         */ {Known::unknown, Stop::work, End::other},
    /* 17 MEM_LIMIT          */ {Known::unknown, Stop::memory, End::other},
    /* 18 LOCALLY_OPTIMAL    */ {Known::locallyOptimal, Stop::finished, End::finished},
    /* 19 LOCALLY_INFEASIBLE */ {Known::locallyInfeasible, Stop::finished, End::locallyInfeasible},
}};

const Meaning& meaning(int gurobiStatus) {
  const bool isKnown = gurobiStatus > 0 && gurobiStatus < static_cast<int>(kMeanings.size());
  return kMeanings[isKnown ? static_cast<std::size_t>(gurobiStatus) : 0];
}

}  // namespace

tav::opt::SolutionStatus solutionStatus(int gurobiStatus) { return meaning(gurobiStatus).known; }
tav::opt::StopReason stopReason(int gurobiStatus) { return meaning(gurobiStatus).stop; }
tav::opt::Termination termination(int gurobiStatus) { return meaning(gurobiStatus).end; }

int SolutionStatus::solutionCount() const {
  const auto model = model_.lock();
  return model && !instead_ ? model->getIntAttr("SolCount") : 0;
}

int SolutionStatus::get(int /*solution*/) const {
  const auto model = model_.lock();
  return model ? static_cast<int>(solutionStatus(instead_ ? *instead_ : model->getIntAttr("Status"))) : 0;
}

int CallbackSolutionStatus::solutionCount() const {
  std::int32_t count = 0;
  if (source_.isAt(where::kMipNode)) source_.get(what::kMipNodeSolCnt, &count);
  return count;
}

}  // namespace grb
