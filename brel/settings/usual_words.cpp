#include "brel/settings/usual_words.h"

#include <algorithm>

namespace brel::settings {
namespace {

struct UsualWord {
  std::string_view word;
  std::string_view name;
};

// By what they mean. What is the same but for a prefix such as "lim:" stands here once, without it.
constexpr UsualWord kWords[] = {
    {"bestbnd", "BestBdStop"},
    {"bestbound", "BestBdStop"},
    {"objbound", "BestBdStop"},
    {"bestobj", "BestObjStop"},
    {"bariterlim", "BarIterLimit"},
    {"bartol", "BarConvTol"},
    {"convtol", "BarConvTol"},
    {"comptol", "BarConvTol"},
    {"dualbnd", "Cutoff"},
    {"uppercutoff", "Cutoff"},
    {"lowercutoff", "Cutoff"},
    {"freq", "DisplayInterval"},
    {"lgfreq", "DisplayInterval"},
    {"outfreq", "DisplayInterval"},
    {"display", "OutputFlag"},
    {"loglevel", "OutputFlag"},
    {"msglev", "OutputFlag"},
    {"verbose", "OutputFlag"},
    {"verbosity", "OutputFlag"},
    {"feastol", "FeasibilityTol"},
    {"primalfeastol", "FeasibilityTol"},
    {"primaltol", "FeasibilityTol"},
    {"tolprimal", "FeasibilityTol"},
    {"relax", "feasopt"},
    {"feasrelax", "feasopt"},
    {"heurfrac", "Heuristics"},
    {"heureffort", "Heuristics"},
    {"iisfind", "iis"},
    {"inttol", "IntFeasTol"},
    {"integrality", "IntFeasTol"},
    {"intfocus", "IntegralityFocus"},
    {"iter", "IterationLimit"},
    {"iterlim", "IterationLimit"},
    {"iterations", "IterationLimit"},
    {"maxiter", "IterationLimit"},
    {"maxiterations", "IterationLimit"},
    {"log", "logfile"},
    {"softmem", "SoftMemLimit"},
    {"maxmemory", "MemLimit"},
    {"memory", "MemLimit"},
    {"algorithm", "Method"},
    {"lpmethod", "Method"},
    {"gap", "MIPGap"},
    {"ratio", "MIPGap"},
    {"relmipgap", "MIPGap"},
    {"mip_gap", "MIPGap"},
    {"relgap", "MIPGap"},
    {"absgap", "MIPGapAbs"},
    {"absmipgap", "MIPGapAbs"},
    {"mip_gap_abs", "MIPGapAbs"},
    {"gapabs", "MIPGapAbs"},
    {"allowablegap", "MIPGapAbs"},
    {"warmstart", "mipstart"},
    {"start", "mipstart"},
    {"multiobj", "multobj"},
    {"node", "NodeLimit"},
    {"nodelim", "NodeLimit"},
    {"nodes", "NodeLimit"},
    {"maxnodes", "NodeLimit"},
    {"nodfile", "NodefileStart"},
    {"numericalfocus", "NumericFocus"},
    {"obj", "objno"},
    {"opttol", "OptimalityTol"},
    {"dualfeastol", "OptimalityTol"},
    {"dualtol", "OptimalityTol"},
    {"toldual", "OptimalityTol"},
    {"emphasis", "MIPFocus"},
    {"poollimit", "PoolSolutions"},
    {"ams_limit", "PoolSolutions"},
    {"ams_eps", "PoolGap"},
    {"ams_epsabs", "PoolGapAbs"},
    {"ams_mode", "PoolSearchMode"},
    {"poolmode", "PoolSearchMode"},
    {"solve", "Presolve"},
    {"pricing", "SimplexPricing"},
    {"random", "Seed"},
    {"randomseed", "Seed"},
    {"random_seed", "Seed"},
    {"scale", "ScaleFlag"},
    {"scaling", "ScaleFlag"},
    {"sol", "SolutionLimit"},
    {"solnlimit", "SolutionLimit"},
    {"solnlim", "SolutionLimit"},
    {"sollim", "SolutionLimit"},
    {"maxsol", "SolutionLimit"},
    {"solnsens", "rngrestart"},
    {"sens", "rngrestart"},
    {"solutionpool", "PoolSearchMode"},
    {"startnodes", "StartNodeLimit"},
    {"cores", "Threads"},
    {"jobs", "Threads"},
    {"nthreads", "Threads"},
    {"num_threads", "Threads"},
    {"numthreads", "Threads"},
    {"thread", "Threads"},
    {"maxtime", "TimeLimit"},
    {"max_cpu_time", "TimeLimit"},
    {"max_seconds", "TimeLimit"},
    {"sec", "TimeLimit"},
    {"seconds", "TimeLimit"},
    {"time", "TimeLimit"},
    {"time_limit", "TimeLimit"},
    {"timelim", "TimeLimit"},
    {"timeout", "TimeLimit"},
    {"tmlim", "TimeLimit"},
    {"tunebase", "tuning"},
    {"tunetime", "TuneTimeLimit"},
    {"basis", "usebasis"},
    {"work", "WorkLimit"},
    {"workerpwd", "WorkerPassword"},
    {"exportmodel", "writeprob"},
    {"exportfile", "writeprob"},
    {"writelp", "writeprob"},
    {"writemodel", "writeprob"},
    {"writemps", "writeprob"},
    {"paramfile", "readparams"},
    {"param:read", "readparams"},
    {"param:write", "writeparams"},
};

std::string_view meaning(std::string_view word) {
  const auto* found =
      std::find_if(std::begin(kWords), std::end(kWords), [&](const UsualWord& w) { return w.word == word; });
  return found == std::end(kWords) ? std::string_view() : found->name;
}

}  // namespace

std::string_view meaningOfUsualWord(std::string_view word) {
  const std::string_view whole = meaning(word);
  const std::size_t colon = word.rfind(':');
  if (!whole.empty() || colon == std::string_view::npos) return whole;
  const std::string_view rest = word.substr(colon + 1);
  const std::string_view found = meaning(rest);
  return found.empty() ? rest : found;
}

}  // namespace brel::settings
