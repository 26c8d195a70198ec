// The sequence of a solve, and what happens in its callbacks.
#include <gmock/gmock.h>

#include <map>
#include <stdexcept>

#include "grb/callback/callbacks.h"
#include "grb/result/solution_status.h"
#include "tests/grb/solver_fixture.h"
#include "tests/tav/thrown.h"

namespace grb {
namespace {

using tav::opt::Context;
using tav::opt::StopReason;
using tav::opt::Termination;
using testing::ElementsAre;
using testing::Pair;

class SolveTest : public SolverOverDouble {
 protected:
  SolveTest() { gurobi->scriptAttr("Status", 2); }
  // Runs `inside` while the next solve optimises.
  void during(std::function<void()> inside) { gurobi->onCall(Fn::GRBoptimize, std::move(inside)); }
  GRBmodel& model() { return gurobi->model(1); }

  std::shared_ptr<Listener> listener = std::make_shared<Listener>();
};

TEST_F(SolveTest, CallsInOrderWithoutAndWithAListener) {
  const std::string status = R"(GRBgetintattr(m1, "Status", *))";
  EXPECT_EQ(solver.solve(), Termination::finished);
  EXPECT_THAT(gurobi->takeCalls(),
              ElementsAre(R"(GRBgetintparam(m1.env, "PDHGGPU", *))", "GRBsetlogcallbackfunc(m1, *, *)",
                          R"(GRBgetintattr(m1, "IsMIP", *))", R"(GRBgetintattr(m1, "NumQNZs", *))",
                          R"(GRBgetintattr(m1, "NumQCNZs", *))", "GRBoptimize(m1)", status, status, status));
  solver.setCallback(listener);
  gurobi->scriptAttr("IsMIP", 1);
  solver.solve();
  EXPECT_THAT(gurobi->takeCalls(), ElementsAre(R"(GRBgetintparam(m1.env, "PDHGGPU", *))",
                                               "GRBsetlogcallbackfunc(m1, *, *)", "GRBsetcallbackfuncadv(m1, *, *, 48)",
                                               R"(GRBgetintattr(m1, "IsMIP", *))", "GRBoptimize(m1)", status, status));
}

TEST_F(SolveTest, WarnsWhenTheLibraryCannotUseTheGpuThatIsAskedFor) {
  gurobi->defineParam({"PDHGGPU", 1, 0, 1});
  EXPECT_EQ(solver.solve(), Termination::finished);
  EXPECT_EQ(gurobi->count(Fn::GRBisgpusupported), 1);
  EXPECT_EQ(log->text,
            "*** Warning: 'PDHGGPU' has been set to 1, but this is not a Gurobi GPU build.\n"
            "In order to download and install a Gurobi GPU build, follow instructions at\n"
            "https://docs.gurobi.com/current/#features/gpu\n");
}

TEST_F(SolveTest, EachStepThatFailsEndsTheSequence) {
  for (const Fn step :
       {Fn::GRBgetintparam, Fn::GRBsetlogcallbackfunc, Fn::GRBsetcallbackfuncadv, Fn::GRBoptimize, Fn::GRBgetintattr}) {
    solver.setCallback(listener);
    gurobi->failCall(step, 10001, "told by Gurobi");
    const auto error = thrown<GurobiException>([&] { solver.solve(); });
    EXPECT_EQ(error.message(), "told by Gurobi");
    EXPECT_EQ(error.context(), fnName(step));
    EXPECT_THAT(gurobi->takeCalls().back(), testing::StartsWith(std::string(fnName(step))));
  }
}

TEST(Statuses, AreToldAsKnowledgeStopReasonAndTermination) {
  using S = tav::opt::SolutionStatus;
  using R = StopReason;
  using T = Termination;
  struct Row {
    int status;
    S known;
    R reason;
    T end;
  };
  constexpr Row kRows[]{
      {0, S::unknown, R::notRun, T::other},
      {1, S::unknown, R::notRun, T::finished},
      {2, S::optimal, R::finished, T::finished},
      {3, S::infeasible, R::finished, T::infeasible},
      {4, S::infeasibleOrUnbounded, R::finished, T::infeasibleOrUnbounded},
      {5, S::unbounded, R::finished, T::unbounded},
      {6, S::unknown, R::cutoff, T::other},
      {7, S::unknown, R::iterations, T::iterationLimit},
      {8, S::unknown, R::nodes, T::nodeLimit},
      {9, S::unknown, R::time, T::timeLimit},
      {10, S::unknown, R::solutions, T::solutionLimit},
      {11, S::unknown, R::interrupted, T::interrupted},
      {12, S::unknown, R::numeric, T::numeric},
      {13, S::unknown, R::suboptimal, T::finished},
      {14, S::unknown, R::notRun, T::other},
      {15, S::unknown, R::target, T::other},
      {16, S::unknown, R::work, T::other},
      {17, S::unknown, R::memory, T::other},
      {18, S::locallyOptimal, R::finished, T::finished},
      {19, S::locallyInfeasible, R::finished, T::locallyInfeasible},
      {20, S::unknown, R::notRun, T::other},
      {-1, S::unknown, R::notRun, T::other},
  };
  // The numbers behind the words are part of the interface.
  EXPECT_EQ(static_cast<int>(T::finished), 0);
  EXPECT_EQ(static_cast<int>(T::solutionLimit), 5);
  EXPECT_EQ(static_cast<int>(T::numeric), 11);
  EXPECT_EQ(static_cast<int>(T::other), 13);
  EXPECT_EQ(static_cast<int>(T::interrupted), 14);
  EXPECT_EQ(static_cast<int>(S::unbounded), 4);
  EXPECT_EQ(static_cast<int>(S::unknown), 6);
  for (const Row& row : kRows) {
    EXPECT_EQ(solutionStatus(row.status), row.known) << row.status;
    EXPECT_EQ(stopReason(row.status), row.reason) << row.status;
    EXPECT_EQ(termination(row.status), row.end) << row.status;
  }
}

TEST_F(SolveTest, TellsSubscribersOfTheirEventsInOrderOfTheirNumbers) {
  solver.setCallback(listener);
  solver.addContext("tav:context", 1, {1, 20});
  solver.addContext("tav:context", 0, {0, 10});
  solver.addContext("tav:context", 2, {2, 30});
  solver.addContext("tav:context", 2, {2, 30});  // the same subscription again
  during([&] {
    for (const int where : {0, 4, 5}) EXPECT_EQ(gurobi->fireCallback(model(), where), 0);
  });
  solver.solve();
  EXPECT_THAT(listener->heard, ElementsAre(Pair(2, 30), Pair(0, 10), Pair(1, 20)));
}

// What a listener reads of a context, by name.
std::map<std::string, double> valuesIn(Solver& solver, int kind) {
  const Context context{"tav:context", kind};
  const auto attributes = solver.makeModelAttributes("tav:solver", context);
  const auto adder = solver.makeConstraintAdder(tav::opt::tag::kSenseDomain, tav::opt::tag::kLinearFunction);
  const auto objective = solver.makeConstraintContainers(adder, {}, context).first;
  std::map<std::string, double> result;
  result["attributes"] = attributes->count();
  const auto status = attributes->get(tav::opt::ModelAttribute::status).as<int>();
  result["status"] = status.get();
  result["solutions"] = status.solutionCount();
  result["nodes"] =
      static_cast<double>(attributes->get(tav::opt::ModelAttribute::nodes).as<unsigned long long>().get());
  result["best"] = objective.get(tav::opt::ObjectiveQuantity::value).as<double>().get(0);
  result["bound"] = objective.get(tav::opt::ObjectiveQuantity::bound).as<double>().get(0);
  return result;
}

TEST_F(SolveTest, LetsListenersReadTheRunningSolveOnlyDuringTheirCall) {
  addVariables(plainVariables(2));
  for (const auto& [what, value] :
       {std::pair{4003, 1e100}, {4004, -1e100}, {4005, 7.0}, {5003, 3.0}, {5004, 2.5}, {5005, 9.0}}) {
    gurobi->scriptCallbackDoubles(what, {value});
  }
  gurobi->scriptCallbackDoubles(4001, {0.25, 0.75});
  gurobi->scriptCallbackInt(5006, 4);
  std::map<int, std::map<std::string, double>> read;
  std::vector<double> point;
  const auto level =
      solver.makeVariableContainers({"tav:context", 2}).get(tav::opt::VariableQuantity::level).as<double>();
  listener->action = [&](const tav::opt::ContextEntry& entry) {
    read[entry.kind] = valuesIn(solver, entry.kind);
    if (entry.kind == 2) point = level.getValues(tav::idx::lib::Range(0, 2));
    EXPECT_EQ(level.solutionCount(), entry.kind == 2 ? 1 : 0);
  };
  solver.setCallback(listener);
  for (const int kind : {0, 2}) solver.addContext("tav:context", kind, {kind, kind});
  during([&] {
    gurobi->model(1).commit();
    gurobi->fireCallback(model(), 4);
    gurobi->fireCallback(model(), 5);
  });
  solver.solve();
  using Values = std::map<std::string, double>;
  EXPECT_EQ(
      read[2],
      (Values{{"attributes", 2}, {"status", 6}, {"solutions", 0}, {"nodes", 7}, {"best", kInf}, {"bound", -kInf}}));
  EXPECT_EQ(read[0],
            (Values{{"attributes", 2}, {"status", 6}, {"solutions", 4}, {"nodes", 9}, {"best", 3}, {"bound", 2.5}}));
  EXPECT_THAT(point, ElementsAre(0.25, 0.75));
  EXPECT_THAT(level.getValues(tav::idx::List()), testing::IsEmpty());

  gurobi->takeCalls();
  EXPECT_EQ(valuesIn(solver, 2),
            (Values{{"attributes", 2}, {"status", 6}, {"solutions", 0}, {"nodes", 0}, {"best", 0}, {"bound", 0}}));
  EXPECT_THAT(gurobi->takeCalls(),
              ElementsAre("GRBcbget(null, -1, 4005, *)", "GRBcbget(null, -1, 4003, *)", "GRBcbget(null, -1, 4004, *)"));
  EXPECT_EQ(level.solutionCount() + level.size(), 0);
  EXPECT_EQ(level.get(0), 0);
  std::vector<double> kept{8};
  level.get(tav::idx::lib::Range(0, 1), kept);
  EXPECT_EQ(kept, std::vector<double>{8});
}

TEST_F(SolveTest, OffersInAContextOnlyWhatTheEventKnows) {
  const auto keys = [&](Context context) { return solver.makeVariableContainers(context).keys(); };
  EXPECT_THAT(keys({"tav:context", 2}), ElementsAre(tav::opt::VariableQuantity::level));
  for (const Context& none : {Context{"tav:context", 0}, {"tav:context", 3}, {"tav:contexts", 2}}) {
    EXPECT_THAT(keys(none), testing::IsEmpty());
  }
  const auto inIncumbent = solver.makeModelAttributes("tav:solver", {"tav:context", 2});
  EXPECT_FALSE(inIncumbent->get(tav::opt::ModelAttribute::timeLimit));
  EXPECT_EQ(solver.makeModelAttributes("tav:solver", {"tav:context", 3})->count(), 0);
  EXPECT_EQ(solver.makeModelAttributes("tav:solver", {"other", 0})->count(), 0);
}

TEST_F(SolveTest, AnExceptionOfAListenerStopsTheSolveAndIsRaisedAfterIt) {
  listener->action = [times = 0](const tav::opt::ContextEntry&) mutable {
    throw std::runtime_error(times++ == 0 ? "the listener" : "the listener again");
  };
  struct BrokenLog : tav::opt::AbstractLog {
    void write(std::string_view) override { throw std::runtime_error("the log"); }
  };
  solver.setCallback(listener);
  solver.addContext("tav:context", 2, {2, 1});
  const auto runs = [&](const std::string& expected) {
    try {
      solver.solve();
      ADD_FAILURE() << "nothing was raised";
    } catch (const std::runtime_error& error) {
      EXPECT_EQ(error.what(), expected);
    }
  };
  during([&] {
    EXPECT_EQ(gurobi->fireCallback(model(), 4), 0);
    EXPECT_EQ(model().terminations, 1);
    EXPECT_EQ(gurobi->fireCallback(model(), 4), 0);
  });
  runs("the listener");
  EXPECT_EQ(model().terminations, 2);

  solver.setLog(std::make_shared<BrokenLog>());
  during([&] { gurobi->fireLog(model(), "a line\n"); });
  runs("the log");
  EXPECT_EQ(model().terminations, 3);

  gurobi->failCall(Fn::GRBoptimize, 10011, "Callback error");  // which the stop may have caused
  runs("the log");

  solver.setLog(log);
  during([] {});
  EXPECT_EQ(solver.solve(), Termination::finished) << "what was raised is forgotten";
}

TEST(Callbacks, WithoutAListenerTheRecordOfTheCallbackStaysAsItIs) {
  CallbackContext context;
  int cbdata = 0;
  context.live->where = 3;
  EXPECT_EQ(grbAdvancedCallback(nullptr, &cbdata, 4, &context), 0);
  EXPECT_EQ(context.live->where, 3);
  EXPECT_EQ(context.live->cbdata, nullptr);
}

TEST(Log, MarksLinesByTheirKind) {
  TextLog log;
  log.status("ready");
  log.message("", "text");
  log.message("Warning", "text");
  log.headed("Note", "two\nlines");
  log.writeLine("plain");
  EXPECT_EQ(log.text, "--- ready\n*** text\n*** Warning: text\n*** Note: two\nlines\nplain\n");
  testing::internal::CaptureStdout();
  tav::opt::AbstractLog().writeLine("to the terminal");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "to the terminal\n");
}

}  // namespace
}  // namespace grb
