#include "grb/option/rows.h"

namespace grb {
namespace {

constexpr NumberRow<double> kRows[] = {
    {"Cutoff", kInfinity, -kInfinity, kInfinity,
     "Solutions whose objective is worse than this value are not looked for; when there are no others, the solve ends "
     "with the status cutoff. Set it to the objective of a known solution when only better ones are of use."},
    {"IterationLimit", kInfinity, 0, kInfinity,
     "Stops after this many simplex iterations. Barrier and PDHG iterations have limits of their own."},
    {"NodeLimit", kInfinity, 0, kInfinity,
     "Stops the search of a MIP after this many branch-and-cut nodes, with the best solution found so far."},
    {"TimeLimit", kInfinity, 0, kInfinity,
     "Stops after this many seconds of elapsed time, with the best solution found so far."},
    {"WorkLimit", kInfinity, 0, kInfinity,
     "Stops after this many units of work, one unit being very roughly a second on one thread. Unlike a time limit it "
     "stops at the same point in every run on the same machine."},
    {"MemLimit", kInfinity, 0, kInfinity,
     "Ends the solve with an error when Gurobi needs more than this many gigabytes; no solution is kept then. "
     "SoftMemLimit stops more gently."},
    {"SoftMemLimit", kInfinity, 0, kInfinity,
     "Stops when Gurobi uses more than this many gigabytes, with the best solution found so far."},
    {"BestObjStop", -kInfinity, -kInfinity, kInfinity,
     "Stops a MIP as soon as a solution at least as good as this objective value is found. Set it when a target is "
     "known that is good enough."},
    {"BestBdStop", kInfinity, -kInfinity, kInfinity,
     "Stops a MIP as soon as the bound on the best objective is at least as good as this value. Allow a small "
     "tolerance in it, since bounds carry rounding errors."},
    {"FeasibilityTol", 1e-6, 1e-9, 0.01,
     "How far a constraint or bound may be violated and still count as satisfied. Tighten it when small violations "
     "matter; loosen it for numerically difficult models."},
    {"IntFeasTol", 1e-5, 1e-9, 0.1,
     "How far the value of an integer variable may be from a whole number. Tighten it when large coefficients turn "
     "tiny fractions into real violations; that makes the solve harder."},
    {"MarkowitzTol", 0.0078125, 0.0001, 0.999,
     "How careful the simplex method is when it factorises a basis: larger values lose less accuracy and take longer. "
     "Raise it only when the log reports numerical trouble."},
    {"MIPGap", 0.0001, 0, kInfinity,
     "A MIP counts as solved when the difference of best solution and bound, relative to the objective of the "
     "solution, is at most this. Raise it to get a good solution sooner."},
    {"MIPGapAbs", 1e-10, 0, kInfinity,
     "A MIP counts as solved when the difference of best solution and bound is at most this. Raise it when small "
     "differences in the objective do not matter."},
    {"OptimalityTol", 1e-6, 1e-9, 0.01,
     "How far reduced costs may point in the improving direction when a solution counts as optimal. Tighten it for "
     "more exact dual values."},
    {"PSDTol", 1e-6, 0, kInfinity,
     "The largest change on the diagonal of a quadratic matrix that Gurobi may make to repair a convex function that "
     "rounding errors made slightly non-convex."},
    {"PerturbValue", 0.0002, 0, kInfinity,
     "The size of the changes that the simplex method makes to the model to move on when it stalls; they are undone "
     "afterwards. Rarely worth changing."},
    {"ObjScale", 0, -1, kInfinity,
     "Positive: the objective is divided by this value; 0: Gurobi decides; negative: it is divided by its largest "
     "coefficient to the power of the absolute value. For very large or very small objective coefficients; dual values "
     "may become less exact."},
    {"BarConvTol", 1e-8, 0, 1,
     "The barrier method stops when primal and dual objective differ by less than this, relative to their size. Loosen "
     "it for a quicker, rougher solution when crossover is off."},
    {"BarQCPConvTol", 1e-6, 0, 1,
     "The same as BarConvTol, for models with quadratic constraints. Tighten it for a more exact solution, loosen it "
     "when the barrier method makes no progress at the end."},
    {"PDHGIterLimit", kInfinity, 0, kInfinity,
     "Stops the first-order method PDHG (Method=6) after this many iterations; crossover, unless it is off, starts "
     "from the last point."},
    {"PDHGRelTol", 1e-6, 0, kInfinity,
     "A point of the first-order method PDHG counts as feasible when its residuals are below this, relative to the "
     "size of the data, or below PDHGAbsTol. With 0 only PDHGAbsTol counts."},
    {"PDHGAbsTol", 1e-6, 1e-9, 0.01,
     "A point of the first-order method PDHG counts as feasible when all its residuals are below this, or below "
     "PDHGRelTol relative to the size of the data."},
    {"PDHGConvTol", 1e-6, 0, 1,
     "The first-order method PDHG stops at a feasible point when primal and dual objective differ by less than this, "
     "relative to their size."},
    {"Heuristics", 0.05, 0, 1,
     "About the share of the time of a MIP solve that goes into looking for solutions. Raise it when solutions come "
     "late, lower it when the bound is what is missing."},
    {"NodefileStart", kInfinity, 0, kInfinity,
     "When the waiting nodes of a MIP fill more than this many gigabytes, they are written to files in the folder "
     "NodefileDir. Set it, for instance to 0.5, when memory runs out."},
    {"NoRelHeurTime", 0, 0, kInfinity,
     "Seconds that the NoRel heuristic of a MIP, which needs no LP relaxation, runs before the root relaxation is "
     "solved. Useful when that relaxation takes very long."},
    {"NoRelHeurWork", 0, 0, kInfinity,
     "Units of work that the NoRel heuristic of a MIP runs before the root relaxation is solved; as NoRelHeurTime, but "
     "the same in every run."},
    {"StartTimeLimit", kInfinity, 0, kInfinity,
     "Seconds that may be spent on completing partial MIP starts. Raise it when a good start is given up too early."},
    {"StartWorkLimit", kInfinity, 0, kInfinity,
     "Units of work that may be spent on completing partial MIP starts; as StartTimeLimit, but the same in every run."},
    {"NLBarPFeasTol", 1e-6, 1e-12, 0.1,
     "How far constraints may be violated at a point that the nonlinear barrier method (OptimalityTarget=1) calls "
     "locally optimal."},
    {"NLBarDFeasTol", 1e-6, 1e-12, 0.1,
     "How large the dual infeasibility may be at a point that the nonlinear barrier method (OptimalityTarget=1) calls "
     "locally optimal."},
    {"NLBarCFeasTol", 1e-8, 1e-12, 0.1,
     "How large the error in complementarity may be at a point that the nonlinear barrier method (OptimalityTarget=1) "
     "calls locally optimal."},
    {"PreSOS1BigM", -1, -1, 10000000000,
     "The largest big-M coefficient that presolve may use to write SOS1 sets with binary variables: 0 leaves the sets "
     "alone, -1 lets Gurobi decide. Large values reformulate more sets and cost accuracy."},
    {"PreSOS2BigM", -1, -1, 10000000000,
     "The largest big-M coefficient that presolve may use to write SOS2 sets with binary variables: 0 leaves the sets "
     "alone, -1 lets Gurobi decide. Large values reformulate more sets and cost accuracy."},
    {"FeasRelaxBigM", 1000000, 0, kInfinity,
     "The big-M value of feasibility relaxations where one is needed, as for counting violated constraints. Raise it "
     "when violations may be larger than this."},
    {"ImproveStartTime", kInfinity, 0, kInfinity,
     "After this many seconds, and with a solution at hand, a MIP solve gives up on the bound and only looks for "
     "better solutions."},
    {"ImproveStartWork", kInfinity, 0, kInfinity,
     "After this many units of work, and with a solution at hand, a MIP solve gives up on the bound and only looks for "
     "better solutions."},
    {"ImproveStartGap", 0, 0, kInfinity,
     "Once the relative gap of a MIP is below this, the solve gives up on the bound and only looks for better "
     "solutions."},
    {"ImproveStartNodes", kInfinity, 0, kInfinity,
     "After this many nodes, and with a solution at hand, a MIP solve gives up on the bound and only looks for better "
     "solutions."},
    {"TuneTimeLimit", 86400, 0, kInfinity,
     "Seconds that a tuning run may take in all. More time means more parameter sets tried."},
    {"TuneCleanup", 0, 0, 1,
     "The share of a tuning run that goes into reaching the best result with fewer changed parameters."},
    {"TuneTargetMIPGap", 0, 0, kInfinity,
     "Tuning stops improving once it has parameters that reach this relative gap on all its models."},
    {"TuneTargetTime", 0.005, 0, kInfinity,
     "Tuning stops improving once it has parameters that solve all its models within this many seconds."},
    {"PoolGap", kInfinity, 0, kInfinity,
     "Only solutions within this relative distance of the best objective are kept in the solution pool."},
    {"PoolGapAbs", kInfinity, 0, kInfinity,
     "Only solutions within this absolute distance of the best objective are kept in the solution pool."},
    {"FuncPieceLength", 0.01, 1e-5, 1000000,
     "The length of each piece when functions are approximated by lines of fixed length (FuncPieces=1). Only for "
     "function constraints that are approximated (FuncNonlinear=0)."},
    {"FuncPieceError", 0.001, 1e-6, 1000000,
     "The largest error of the approximation by lines: absolute with FuncPieces=-1, relative with FuncPieces=-2. Only "
     "for function constraints that are approximated (FuncNonlinear=0)."},
    {"FuncPieceRatio", -1, -1, 1,
     "Where the approximating lines lie: 0 below the function, 1 above it, between them in proportion, -1 through "
     "points of it. Only for function constraints that are approximated (FuncNonlinear=0)."},
    {"FuncMaxVal", 1000000, 0.01, kInfinity,
     "Bounds of variables in function constraints that are approximated by lines are cut to this absolute value, since "
     "pieces with huge numbers are inaccurate."},
};

}  // namespace

std::span<const NumberRow<double>> doubleRows() { return kRows; }

}  // namespace grb
