#include "grb/option/rows.h"

namespace grb {
namespace {

constexpr NumberRow<int> kRows[] = {
    {"SolutionLimit", kMaxInt, 1, kMaxInt,
     "Stops a MIP after this many feasible solutions. With 1 the first solution ends the solve."},
    {"Method", -1, -1, 6,
     "The algorithm for continuous models and for the root of a MIP: -1 automatic, 0 primal simplex, 1 dual simplex, 2 "
     "barrier, 3 several at once, 4 several at once with the same result in every run, 5 only simplex methods at once, "
     "6 PDHG."},
    {"ConcurrentMethod", -1, -1, 3,
     "What runs side by side when Method is 3 or 4: -1 automatic, 0 barrier and both simplex methods, 1 barrier and "
     "dual simplex, 2 barrier and primal simplex, 3 both simplex methods."},
    {"ScaleFlag", -1, -1, 3,
     "How the numbers of the model are scaled: -1 automatic, 0 not at all, 1 to 3 in different ways, of which 2 suits "
     "coefficients of very different sizes. Off can give smaller violations in the original model."},
    {"SimplexPricing", -1, -1, 3,
     "How the simplex method chooses its next step: -1 automatic, 0 partial pricing, 1 steepest edge, 2 devex, 3 "
     "steepest edge with a quick start. Rarely worth changing."},
    {"Quad", -1, -1, 1,
     "Whether the simplex method computes in quadruple precision: -1 automatic, 0 never, 1 always. For numerically "
     "difficult models; much slower."},
    {"NormAdjust", -1, -1, 3,
     "Variants of the norms that guide the simplex method: -1 automatic, 0 to 3 a fixed one. Rarely worth changing."},
    {"SiftMethod", -1, -1, 2,
     "The algorithm for the LPs inside sifting: -1 automatic, 0 primal simplex, 1 dual simplex, 2 barrier."},
    {"Sifting", -1, -1, 2,
     "Whether the dual simplex method works on a growing choice of the columns: -1 automatic, 0 off, 1 moderate, 2 "
     "aggressive. For LPs with a hundred times more columns than rows."},
    {"LPWarmStart", -1, -1, 2,
     "What is made of a given basis or start point of an LP: -1 automatic, 0 ignored, 1 used on the original model "
     "without presolve, 2 carried over to the presolved model. 2 keeps the speed of presolve."},
    {"NetworkAlg", -1, -1, 1,
     "Whether LPs that are network problems are solved by the network simplex method: -1 automatic, 0 no, 1 yes."},
    {"BarIterLimit", 1000, 0, kMaxInt,
     "Stops the barrier method after this many iterations. It rarely needs more than a hundred."},
    {"BarCorrectors", -1, -1, kMaxInt,
     "The most central corrections per barrier iteration; -1 lets Gurobi decide. More of them mean fewer but slower "
     "iterations."},
    {"BarHomogeneous", -1, -1, 1,
     "Whether the homogeneous barrier method is used: -1 automatic, 0 no, 1 yes. It is slower, and surer at "
     "recognising infeasible and unbounded models."},
    {"BarOrder", -1, -1, 1,
     "How the barrier method orders its matrix: -1 automatic, 0 minimum degree, 1 nested dissection. Try it when the "
     "ordering takes a large share of the time."},
    {"Crossover", -1, -1, 5,
     "How a barrier or PDHG solution of an LP becomes a basic one: -1 automatic, 0 not at all, 1 to 5 in different "
     "ways. Off saves time when neither a basis nor a clean vertex is needed."},
    {"CrossoverBasis", -1, -1, 1,
     "The basis that crossover begins with: -1 automatic, 0 found quickly, 1 found with more care. Try 1 when "
     "crossover runs into numerical trouble."},
    {"PDHGGPU", 0, 0, 1,
     "1 runs the first-order method PDHG (Method=6) on a graphics processor. It needs a GPU build of Gurobi and "
     "suitable hardware."},
    {"BranchDir", 0, -1, 1,
     "Which child of a MIP node is explored first: -1 the lower, 0 automatic, 1 the upper. Rarely worth changing."},
    {"DegenMoves", -1, -1, kMaxInt,
     "The most passes over equally good bases that make the root relaxation of a MIP more integral; -1 lets Gurobi "
     "decide. Try 0 when much time passes right after the root relaxation."},
    {"Disconnected", -1, -1, 2,
     "How hard Gurobi looks for parts of a model that have nothing to do with each other: -1 automatic, 0 not at all, "
     "1 moderately, 2 aggressively."},
    {"FixVarsInIndicators", 0, 0, 1,
     "What the fixed model makes of indicator constraints: 0 keeps those that are active as linear rows and drops the "
     "others, 1 fixes all their variables to their values in the solution."},
    {"IntegralityFocus", 0, 0, 1,
     "1 works harder on solutions whose integer variables are exactly whole. Set it when tiny fractions, times a large "
     "coefficient, let flows trickle that should be zero."},
    {"MinRelNodes", -1, -1, kMaxInt,
     "Nodes that an expensive heuristic explores when no solution was found in another way; -1 lets Gurobi decide. A "
     "last resort for models without a feasible solution."},
    {"MIPFocus", 0, 0, 3,
     "What the MIP search strives for: 0 a balance, 1 feasible solutions soon, 2 the proof of optimality, 3 the bound. "
     "The first parameter to try when the balance does not suit."},
    {"NodeMethod", -1, -1, 5,
     "The algorithm for the nodes of a MIP: -1 automatic, 0 primal simplex, 1 dual simplex, 2 barrier."},
    {"NoRelHeurSolutions", 0, 0, kMaxInt,
     "Stops the NoRel heuristic, which needs no LP relaxation, after this many solutions; 0 sets no such limit."},
    {"OBBT", -1, -1, 3,
     "Work spent on tightening bounds by small optimisation problems: -1 automatic, 0 none, 1 to 3 more and more. Can "
     "help on non-convex models."},
    {"PumpPasses", -1, -1, kMaxInt,
     "Passes of the feasibility pump heuristic; -1 lets Gurobi decide. A last resort for models without a feasible "
     "solution."},
    {"RINS", -1, -1, kMaxInt,
     "The RINS heuristic runs at every n-th node: -1 automatic, 0 never. More of it brings better solutions sooner and "
     "the proof later."},
    {"NLPHeur", -1, -1, 3,
     "How often a nonlinear barrier method looks for solutions of non-convex and nonlinear models: -1 automatic, 0 "
     "never, 1 to 3 more and more."},
    {"StartNodeLimit", -1, -3, kMaxInt,
     "Nodes for completing a partial MIP start: -1 as many as SubMIPNodes, -2 takes complete starts only, -3 ignores "
     "all starts."},
    {"SubMIPNodes", 500, 0, kMaxInt,
     "Nodes for the small MIPs that heuristics such as RINS solve. More of them may find better solutions and take "
     "longer."},
    {"Symmetry", -1, -1, 2,
     "How hard symmetry in a MIP is looked for: -1 automatic, 0 not at all, 1 a little, 2 aggressively. Rarely worth "
     "changing."},
    {"VarBranch", -1, -1, 3,
     "How the variable to branch on is chosen: -1 automatic, 0 by pseudo reduced costs, 1 by pseudo shadow prices, 2 "
     "by the largest infeasibility, 3 by strong branching. Rarely worth changing."},
    {"ZeroObjNodes", -1, -1, kMaxInt,
     "Nodes of a heuristic that solves the model without its objective; -1 lets Gurobi decide. A last resort for "
     "models without a feasible solution."},
    {"Cuts", -1, -1, 3,
     "How many cutting planes are made: -1 automatic, 0 none, 1 some, 2 many, 3 very many. Each kind of cut has a "
     "parameter of its own that overrides this one."},
    {"CutPasses", -1, -1, kMaxInt,
     "The most rounds of cutting planes at the root; -1 lets Gurobi decide. Lower it when many rounds hardly move the "
     "bound."},
    {"CliqueCuts", -1, -1, 2,
     "Clique cuts, from sets of binary variables of which at most one can be 1: -1 automatic, 0 none, 1 moderate, 2 "
     "aggressive. Overrides Cuts. More cuts may move the bound and take time."},
    {"CoverCuts", -1, -1, 2,
     "Cover cuts, from knapsack constraints: -1 automatic, 0 none, 1 moderate, 2 aggressive. Overrides Cuts. More cuts "
     "may move the bound and take time."},
    {"CutAggPasses", -1, -1, kMaxInt,
     "The most rounds of adding up constraints in search of cuts; -1 lets Gurobi decide. Overrides Cuts."},
    {"FlowCoverCuts", -1, -1, 2,
     "Flow cover cuts, from fixed-charge flows into a node: -1 automatic, 0 none, 1 moderate, 2 aggressive. Overrides "
     "Cuts. More cuts may move the bound and take time."},
    {"FlowPathCuts", -1, -1, 2,
     "Flow path cuts, from fixed-charge flows along a path: -1 automatic, 0 none, 1 moderate, 2 aggressive. Overrides "
     "Cuts. More cuts may move the bound and take time."},
    {"GomoryPasses", -1, -1, kMaxInt, "The most rounds of Gomory cuts; -1 lets Gurobi decide. Overrides Cuts."},
    {"GUBCoverCuts", -1, -1, 2,
     "Cover cuts that use sets of binary variables of which one is 1: -1 automatic, 0 none, 1 moderate, 2 aggressive. "
     "Overrides Cuts. More cuts may move the bound and take time."},
    {"ImpliedCuts", -1, -1, 2,
     "Implied bound cuts, from bounds that a binary variable puts on another variable: -1 automatic, 0 none, 1 "
     "moderate, 2 aggressive. Overrides Cuts. More cuts may move the bound and take time."},
    {"ProjImpliedCuts", -1, -1, 2,
     "Implied bound cuts after projection onto fewer variables: -1 automatic, 0 none, 1 moderate, 2 aggressive. "
     "Overrides Cuts. More cuts may move the bound and take time."},
    {"DualImpliedCuts", -1, -1, 2,
     "Dual implied bound cuts: -1 automatic, 0 none, 1 moderate, 2 aggressive. Overrides Cuts. More cuts may move the "
     "bound and take time."},
    {"MIPSepCuts", -1, -1, 2,
     "MIP separation cuts: -1 automatic, 0 none, 1 moderate, 2 aggressive. Overrides Cuts. More cuts may move the "
     "bound and take time."},
    {"MIRCuts", -1, -1, 2,
     "Mixed integer rounding cuts: -1 automatic, 0 none, 1 moderate, 2 aggressive. Overrides Cuts. More cuts may move "
     "the bound and take time."},
    {"StrongCGCuts", -1, -1, 2,
     "Strong Chvatal-Gomory cuts: -1 automatic, 0 none, 1 moderate, 2 aggressive. Overrides Cuts. More cuts may move "
     "the bound and take time."},
    {"NetworkCuts", -1, -1, 2,
     "Network cuts, from flow structure in the rows: -1 automatic, 0 none, 1 moderate, 2 aggressive. Overrides Cuts. "
     "More cuts may move the bound and take time."},
    {"SubMIPCuts", -1, -1, 2,
     "Sub-MIP cuts: -1 automatic, 0 none, 1 moderate, 2 aggressive. Overrides Cuts. More cuts may move the bound and "
     "take time."},
    {"ZeroHalfCuts", -1, -1, 2,
     "Zero-half cuts, from sums of rows halved and rounded: -1 automatic, 0 none, 1 moderate, 2 aggressive. Overrides "
     "Cuts. More cuts may move the bound and take time."},
    {"ModKCuts", -1, -1, 2,
     "Mod-k cuts, from sums of rows divided by k and rounded: -1 automatic, 0 none, 1 moderate, 2 aggressive. "
     "Overrides Cuts. More cuts may move the bound and take time."},
    {"InfProofCuts", -1, -1, 2,
     "Cuts from proofs that a node is infeasible: -1 automatic, 0 none, 1 moderate, 2 aggressive. Overrides Cuts. More "
     "cuts may move the bound and take time."},
    {"RLTCuts", -1, -1, 2,
     "Cuts from products of constraints, for models with products of variables: -1 automatic, 0 none, 1 moderate, 2 "
     "aggressive. Overrides Cuts. More cuts may move the bound and take time."},
    {"RelaxLiftCuts", -1, -1, 2,
     "Relax-and-lift cuts: -1 automatic, 0 none, 1 moderate, 2 aggressive. Overrides Cuts. More cuts may move the "
     "bound and take time."},
    {"BQPCuts", -1, -1, 2,
     "Cuts for products of binary variables: -1 automatic, 0 none, 1 moderate, 2 aggressive. Overrides Cuts. More cuts "
     "may move the bound and take time."},
    {"PSDCuts", -1, -1, 2,
     "Cuts for non-convex quadratic functions, from positive semidefinite matrices: -1 automatic, 0 none, 1 moderate, "
     "2 aggressive. Overrides Cuts. More cuts may move the bound and take time."},
    {"LiftProjectCuts", -1, -1, 2,
     "Lift-and-project cuts: -1 automatic, 0 none, 1 moderate, 2 aggressive. Overrides Cuts. More cuts may move the "
     "bound and take time."},
    {"MixingCuts", -1, -1, 2,
     "Mixing cuts: -1 automatic, 0 none, 1 moderate, 2 aggressive. Overrides Cuts. More cuts may move the bound and "
     "take time."},
    {"MasterKnapsackCuts", -1, -1, 2,
     "Cuts from master knapsack polyhedra: -1 automatic, 0 none, 1 moderate, 2 aggressive. Overrides Cuts. More cuts "
     "may move the bound and take time."},
    {"NLBarIterLimit", 1000, 0, kMaxInt,
     "Stops the nonlinear barrier method (OptimalityTarget=1) after this many iterations."},
    {"OptimalityTarget", -1, -1, 1,
     "What a solution of a nonlinear continuous model must be: -1 automatic (now global), 0 a global optimum, 1 a "
     "local optimum, which is found much sooner and not proved to be the best."},
    {"Aggregate", 1, 0, 2,
     "How far presolve substitutes variables: 0 off, 1 moderate, 2 aggressive. Off can help when the solution is "
     "inaccurate."},
    {"AggFill", -1, -1, kMaxInt,
     "How many new nonzeros presolve may make by substituting a variable; -1 lets Gurobi decide. More of them leave "
     "fewer rows and columns."},
    {"PreDual", -1, -1, 2,
     "Whether presolve hands on the dual of a continuous model: -1 automatic, 0 no, 1 yes, 2 makes both and chooses. "
     "Some models are solved faster in this form."},
    {"ConcurrentMIP", 1, 1, 64,
     "Solves a MIP this many times at once, each with other parameters, and ends with the first that finishes. The "
     "threads are shared among them."},
    {"ConcurrentJobs", 0, 0, kMaxInt,
     "Solves the model on this many machines at once, each with other parameters, and ends with the first that "
     "finishes. Needs a cluster of workers; 0 is off."},
    {"DisplayInterval", 5, 1, kMaxInt,
     "Seconds between two lines of the log of a search. Raise it for shorter logs of long solves."},
    {"DistributedMIPJobs", 0, 0, kMaxInt,
     "Divides the search of a MIP among this many machines. Needs a cluster of workers; 0 is off."},
    {"DualReductions", 1, 0, 1,
     "0 keeps presolve from steps that cannot tell an infeasible model from an unbounded one. Set it to learn which of "
     "the two a model is."},
    {"IISMethod", -1, -1, 3,
     "How an infeasible subsystem is found: -1 automatic, 0 quickly, 1 with smaller results (for LPs a way to try when "
     "0 is slow), 2 without looking at bounds, 3 that of the relaxation of a MIP."},
    {"MIQCPMethod", -1, -1, 1,
     "How a MIP with quadratic constraints is solved: -1 automatic, 0 with the quadratic relaxation at each node, 1 "
     "with linear cuts around the quadratic constraints."},
    {"NonConvex", -1, -1, 2,
     "What is done with non-convex quadratic functions: -1 automatic (nearly 2), 0 an error, 1 an error unless "
     "presolve removes them, 2 a global search by branching."},
    {"NumericFocus", 0, 0, 3,
     "How much care is taken with numerical difficulties: 0 automatic, 1 to 3 more and more, at the price of speed. "
     "Raise it when the log warns of numerical trouble."},
    {"InheritParams", -1, -1, 1,
     "Whether the environments of concurrent and multi-objective solves take over the parameters of the model: -1 "
     "automatic (now no), 0 no, 1 yes."},
    {"QCPDual", 0, 0, 1, "1 computes dual values of models with quadratic constraints, which takes extra time."},
    {"PreCrush", 0, 0, 1,
     "1 keeps from presolve the few reductions after which a constraint of the original model cannot be translated to "
     "the presolved one. Only of use to cuts added from outside."},
    {"PreDepRow", -1, -1, 1,
     "Whether presolve removes rows that depend linearly on others: -1 in continuous models only, 0 never, 1 always."},
    {"PreQLinearize", -1, -1, 2,
     "Whether presolve replaces products with binary variables by linear constraints: -1 automatic, 0 no, 1 aims at a "
     "strong relaxation, 2 at a small model."},
    {"PrePasses", -1, -1, kMaxInt,
     "The most passes of presolve; -1 lets Gurobi decide. Lower it when presolve takes a large share of the time."},
    {"Presolve", -1, -1, 2,
     "How hard the model is simplified before the solve: -1 automatic, 0 not at all, 1 a little, 2 aggressively. "
     "Aggressive takes longer and can give a tighter model."},
    {"PreSOS1Encoding", -1, -1, 3,
     "How presolve writes SOS1 sets with binary variables: -1 automatic, 0 and 1 in linear size, 2 and 3 in "
     "logarithmic size; 0 and 2 are easier to solve at a node, 1 and 3 are stronger."},
    {"PreSOS2Encoding", -1, -1, 3,
     "How presolve writes SOS2 sets with binary variables: -1 automatic, 0 and 1 in linear size, 2 and 3 in "
     "logarithmic size; 0 and 2 are easier to solve at a node, 1 and 3 are stronger."},
    {"PreSparsify", -1, -1, 2,
     "Whether presolve looks for ways to have fewer nonzeros: -1 automatic, 0 no, 1 in MIPs, 2 in all models."},
    {"PreMIQCPForm", -1, -1, 2,
     "The form in which presolve hands on a MIP with quadratic constraints: -1 automatic, 0 as it is, 1 with "
     "second-order cones, 2 with small rotated cones."},
    {"Seed", 0, 0, kMaxInt,
     "The seed of all random choices. Another seed may lead to another path and time; try several to see how much of a "
     "difference is chance."},
    {"SolutionTarget", -1, -1, 1,
     "What a solution of an LP must be: -1 automatic, 0 optimal and basic, 1 optimal for primal and dual."},
    {"Threads", 0, -1, 1024,
     "Threads that the parallel algorithms use: 0 lets Gurobi decide, mostly one per processor up to 32; -1 takes all "
     "processors. Lower it to leave room for other programs or to save memory."},
    {"TuneResults", -1, -2, kMaxInt,
     "How many parameter sets tuning keeps: -1 the best for each number of changed parameters, -2 all, otherwise this "
     "many."},
    {"TuneCriterion", -1, -1, 3,
     "What tuning compares where the time limit ends the solves: -1 automatic, 0 nothing else than time, 1 the gap, 2 "
     "the best solution, 3 the bound."},
    {"TuneTrials", 0, 0, kMaxInt,
     "How often tuning solves with each parameter set, each time with another seed; 0 lets Gurobi decide. More trials "
     "leave less to chance."},
    {"TuneOutput", 2, 0, 3,
     "What a tuning run logs: 0 nothing, 1 each new best parameter set, 2 each set that is tried, 3 the logs of the "
     "solves as well."},
    {"TuneJobs", 0, 0, kMaxInt,
     "Tunes on this many machines at once, which are held for the whole run. Needs a cluster of workers; 0 is off."},
    {"TuneMetric", -1, -1, 1,
     "How tuning sums up several results of one parameter set: -1 automatic, 0 by their average, 1 by the largest."},
    {"TuneDynamicJobs", 0, -1, kMaxInt,
     "Tunes on up to this many machines at once, which may be handed back in between; -1 sets no limit. Needs a "
     "cluster of workers; 0 is off."},
    {"MultiObjMethod", -1, -1, 2,
     "The algorithm for all but the first objective of a continuous model with several: -1 automatic, 0 primal "
     "simplex, 1 dual simplex, 2 anew by Method."},
    {"MultiObjPre", -1, -1, 2,
     "Presolve before the first of several objectives: -1 automatic, 0 off, 1 a little, 2 aggressive. Aggressive may "
     "change objective values slightly."},
    {"Record", 0, 0, 1,
     "1 writes the calls of the Gurobi library to files that can be replayed, for its support. It has to be set before "
     "the first solve: Gurobi refuses it once it has started."},
    {"PoolSolutions", 10, 1, kMaxInt,
     "How many solutions of a MIP are kept. What is looked for besides the best one is chosen by PoolSearchMode."},
    {"PoolSearchMode", 0, 0, 2,
     "What the solution pool holds besides the best solution of a MIP: 0 what was found on the way, 1 more solutions, "
     "2 the PoolSolutions best ones. 1 and 2 go on after the optimum."},
    {"PartitionPlace", 15, 0, 31,
     "When the heuristic over user-given partitions runs; the sum of 16 before the root relaxation, 8 before and 4 "
     "after the cuts at the root, 2 at nodes, 1 at the end."},
    {"FuncPieces", 0, -2, 200000000,
     "How functions are approximated by lines: 0 automatic, 1 pieces of length FuncPieceLength, 2 and more this many "
     "pieces, -1 by absolute and -2 by relative error. Only for function constraints that are approximated "
     "(FuncNonlinear=0)."},
    {"FuncNonlinear", 1, 0, 1,
     "How function constraints are treated: 1 exactly, by branching; 0 by an approximation with lines before the "
     "solve."},
    {"OutputFlag", 1, 0, 1, "0 switches the log of Gurobi off; the messages of the link stay."},
};

}  // namespace

std::span<const NumberRow<int>> intRows() { return kRows; }

}  // namespace grb
