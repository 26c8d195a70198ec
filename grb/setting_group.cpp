#include "grb/setting_group.h"

#include <map>
#include <string_view>

#include "grb/option/catalogue.h"

namespace grb {
namespace {

constexpr const char* kLimits = "Limits and targets";
constexpr const char* kTolerances = "Tolerances and numerics";
constexpr const char* kSimplex = "Simplex and choice of method";
constexpr const char* kBarrier = "Barrier";
constexpr const char* kFirstOrder = "First-order method (PDHG)";
constexpr const char* kMip = "MIP search";
constexpr const char* kCuts = "Cuts";
constexpr const char* kNonlinear = "Quadratic and nonlinear";
constexpr const char* kPresolve = "Presolve";
constexpr const char* kInfeasible = "Infeasible models";
constexpr const char* kPool = "Solution pool";
constexpr const char* kObjectives = "Several objectives";
constexpr const char* kTuning = "Tuning";
constexpr const char* kParallel = "Threads and machines";
constexpr const char* kOutput = "Output and files";

struct Run {
  std::string_view first;
  const char* group;
};

// The catalogue keeps together what belongs together: a group begins at a name and lasts until the next one here.
constexpr Run kRuns[] = {
    {"dofuncpieces", "Link"},
    {"Cutoff", kLimits},
    {"FeasibilityTol", kTolerances},
    {"PerturbValue", kSimplex},
    {"BarConvTol", kBarrier},
    {"PDHGIterLimit", kFirstOrder},
    {"Heuristics", kMip},
    {"NLBarPFeasTol", kNonlinear},
    {"PreSOS1BigM", kPresolve},
    {"FeasRelaxBigM", kInfeasible},
    {"ImproveStartTime", kMip},
    {"TuneTimeLimit", kTuning},
    {"PoolGap", kPool},
    {"FuncPieceLength", kNonlinear},
    {"SolutionLimit", kLimits},
    {"Method", kSimplex},
    {"BarIterLimit", kBarrier},
    {"PDHGGPU", kFirstOrder},
    {"BranchDir", kMip},
    {"Cuts", kCuts},
    {"NLBarIterLimit", kNonlinear},
    {"Aggregate", kPresolve},
    {"ConcurrentMIP", kParallel},
    {"DisplayInterval", kOutput},
    {"DistributedMIPJobs", kParallel},
    {"DualReductions", kPresolve},
    {"IISMethod", kInfeasible},
    {"MIQCPMethod", kNonlinear},
    {"NumericFocus", kTolerances},
    {"InheritParams", kObjectives},
    {"QCPDual", kNonlinear},
    {"PreCrush", kPresolve},
    {"Seed", kMip},
    {"SolutionTarget", kSimplex},
    {"Threads", kParallel},
    {"TuneResults", kTuning},
    {"MultiObjMethod", kObjectives},
    {"Record", kOutput},
    {"PoolSolutions", kPool},
    {"PartitionPlace", kMip},
    {"FuncPieces", kNonlinear},
    {"OutputFlag", kOutput},
    {"NodefileDir", kMip},
    {"SolFiles", kOutput},
    {"WorkerPassword", kParallel},
    {"ResultFile", kOutput},
};

std::map<int, const char*> groupsByKey() {
  std::map<int, const char*> groups;
  const char* group = "";
  for (const int key : entryKeys()) {
    for (const Run& run : kRuns) {
      if (run.first == entryOf(key)->info->name()) group = run.group;
    }
    groups.emplace(key, group);
  }
  return groups;
}

}  // namespace

std::string settingGroup(int key) {
  static const std::map<int, const char*> kGroups = groupsByKey();
  const auto found = kGroups.find(key);
  return found == kGroups.end() ? std::string() : found->second;
}

}  // namespace grb
