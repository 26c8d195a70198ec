// What a solve does besides solving: starts, a second try, relaxation, conflicts, changes.
#include <fmt/format.h>
#include <gmock/gmock.h>

#include "tests/grb/solver_fixture.h"
#include "tests/tav/thrown.h"

namespace grb {
namespace {

namespace tag = tav::opt::tag;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using VQ = tav::opt::VariableQuantity;
using RQ = tav::opt::RowQuantity;

// Variables and rows with what is known of a solution.
struct Known {
  std::vector<double> levels, marginals;
  std::vector<int> columnBasis, rowBasis;
};

class ProcedureTest : public SolverOverDouble {
 protected:
  ProcedureTest() {
    gurobi->scriptAttr("Status", 2);
    gurobi->defineParam({"Presolve", -1, -1, 2});
    gurobi->defineParam({"IntFeasTol", 1e-5, 1e-9, 1e-1});
  }

  void addVariables(std::vector<int> types, const std::vector<Given>& more = {}, const OwnGroup& own = {}) {
    const std::size_t n = types.size();
    SolverFixture::addVariables(
        variables(std::move(types), {std::vector<double>(n, 0), std::vector<double>(n, 5)}, more, own));
  }
  void addRows(std::size_t n, const std::vector<Given>& more = {}, const OwnGroup& own = {}) {
    add(tag::kStaticBoundedDomain, tag::kLinearFunction,
        functions(space(), std::vector<Function>(n, Function{1, {0}, {1}, -4}), more, own));
  }
  // Two variables and one row.
  void load(const Known& known) {
    std::vector<Given> ofColumns, ofRows;
    if (!known.levels.empty()) ofColumns.push_back({VQ::level, values(known.levels)});
    if (!known.columnBasis.empty()) ofColumns.push_back({VQ::basis, values(known.columnBasis)});
    if (!known.marginals.empty()) ofRows.push_back({RQ::marginal, values(known.marginals)});
    if (!known.rowBasis.empty()) ofRows.push_back({RQ::basis, values(known.rowBasis)});
    addVariables({0, 0}, ofColumns);
    addRows(1, ofRows);
    gurobi->takeCalls();
  }
  // Calls of the last solve whose text has one of the words.
  Calls callsWith(const std::vector<std::string>& words) {
    Calls found;
    for (const std::string& call : gurobi->takeCalls()) {
      const auto has = [&](const std::string& word) { return call.find(word) != std::string::npos; };
      if (std::any_of(words.begin(), words.end(), has)) found.push_back(call);
    }
    return found;
  }
  std::string takeLog() { return std::exchange(log->text, ""); }
};

const std::string kBasisLong =
    "Registering advanced basis. This turns off presolve!\n"
    "In case of poor performance consider turning off advanced basis registration\n"
    "via KAVO option BRatio=1 or KAVO/Gurobi option UseBasis=0 or LPWarmStart=2.\n";
const std::string kPointLong =
    "Registering primal dual solution. This turns off presolve!\n"
    "In case of poor performance consider turning off primal dual solution\n"
    "registration via KAVO option BRatio=1 or KAVO/Gurobi option UseBasis=0\nor LPWarmStart=2.\n";

TEST_F(ProcedureTest, AContinuousModelStartsFromWhatIsCompleteAndAskedFor) {
  constexpr int kNotGiven = -1;
  const Known all{{1, 2}, {0.5}, {3, 2}, {1}};
  const std::string basis =
      R"(GRBsetintattrarray(m1, "VBasis", 0, 2, [0, -2]) GRBsetintattrarray(m1, "CBasis", 0, 1, [-1]) )";
  const std::string point =
      R"(GRBsetdblattrarray(m1, "PStart", 0, 2, [1, 2]) GRBsetdblattrarray(m1, "DStart", 0, 1, [0.5]) )";
  struct Case {
    const char* what;
    Known known;
    int usebasis, lpWarmStart;
    std::string calls, log;
  };
  const Case cases[]{
      {"all is known", all, kNotGiven, -1, basis + point, kBasisLong + kPointLong},
      {"switched off", all, 0, -1, "", ""},
      {"the basis only", all, 2, -1, basis, kBasisLong},
      {"the point only", all, 3, 2, point, "Registering primal dual solution.\n"},
      {"with presolve", all, 1, 2, basis + point, "Registering advanced basis.\nRegistering primal dual solution.\n"},
      {"not all is known", {{1, 2}, {}, {3, 2}, {1}}, kNotGiven, 2, "", ""},
      {"a level is missing", {{1, kNaN}, {0.5}, {3, 2}, {1}}, 1, 2, basis, "Registering advanced basis.\n"},
      {"too few basics", {{1, 2}, {0.5}, {4, 2}, {1}}, 1, 2, point, "Registering primal dual solution.\n"},
      {"too many basics become nonbasic",
       {{}, {}, {3, 3}, {1}},
       2,
       2,
       R"(GRBsetintattrarray(m1, "VBasis", 0, 2, [0, -1]) GRBsetintattrarray(m1, "CBasis", 0, 1, [-1]) )",
       "Registering advanced basis.\n"},
      {"a row that is basic",
       {{}, {}, {3, 2}, {3}},
       2,
       2,
       R"(GRBsetintattrarray(m1, "VBasis", 0, 2, [-1, -2]) GRBsetintattrarray(m1, "CBasis", 0, 1, [0]) )",
       "Registering advanced basis.\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    solver.clear();
    load(c.known);
    option("usebasis").reset();
    if (c.usebasis != kNotGiven) set("usebasis", c.usebasis);
    set("LPWarmStart", c.lpWarmStart);
    gurobi->takeCalls();
    takeLog();
    solver.solve();
    std::string calls;
    for (const std::string& call : callsWith({"Basis\"", "Start\", 0"})) {
      calls += call.substr(0, 18) + "(m1" + call.substr(call.find(',')) + " ";  // whatever the number of the model
    }
    EXPECT_EQ(calls, c.calls);
    EXPECT_EQ(takeLog(), c.log);
    solver.solve();
    EXPECT_THAT(callsWith({"Basis\"", "Start\", 0"}), IsEmpty()) << "Gurobi's own last basis is the better start";
  }
  gurobi->scriptAttr("NumQCNZs", 1);
  load(all);
  solver.solve();
  EXPECT_EQ(takeLog(), "") << "a model with quadratic terms starts afresh";
}

TEST_F(ProcedureTest, AMipGetsStartsHintsAndPriorities) {
  gurobi->scriptAttr("IsMIP", 1);
  addVariables({0, 1, 1, 2, 3}, {{VQ::level, values<double>({kNaN, 2.000001, 2.5, 0.25, 3})}},
               {{"priority", values<double>({kNaN, 1, 2, 3, kNaN})}});
  const auto starts = ofVariables(VQ::starts);
  starts.set(tav::idx::lib::Range(0, 5), std::vector<double>{0.5, 1e-5, -0.99999, 0.7, 0.7}, 0);
  starts.set(1, 4, 1);
  EXPECT_EQ(starts.solutionCount(), 2);
  for (const char* option : {"mipstart", "varhint"}) set(option, 1);
  gurobi->takeCalls();
  solver.solve();
  EXPECT_THAT(
      callsWith({"Start", "VarHint", "Branch", "optimize"}),
      ElementsAre(R"(GRBsetintparam(m1.env, "StartNumber", -1))",
                  R"(GRBsetdblattrlist(m1, "Start", 4, [0, 1, 2, 3], [0.5, 0, -1, 0.7]))",
                  R"(GRBsetdblattrlist(m1, "Start", 1, [1], [4]))", R"(GRBsetintparam(m1.env, "StartNumber", 0))",
                  R"(GRBsetdblattrlist(m1, "VarHintVal", 3, [1, 3, 4], [2, 0.25, 3]))",
                  R"(GRBsetintattrlist(m1, "BranchPriority", 3, [1, 2, 3], [1000, 500, 0]))", "GRBoptimize(m1)"));
  EXPECT_EQ(takeLog(),
            "Copy 4 variables into MIP Start.\nSkipped 1 integer variables for MIP Start due to infeasibility.\n"
            "Copy 1 variables into MIP Start.\n"
            "Copy 3 variables into Variable Hint.\n"
            "Skipped 1 integer variables for Variable Hint due to infeasibility.\n"
            "Copy 3 variable branching priorities.\n");
}

TEST_F(ProcedureTest, PrioritiesAreTurnedAndScaled) {
  struct Case {
    std::vector<double> given;
    const char* sent;
  };
  const Case cases[]{{{1, 1.5}, "[500, 0]"},
                     {{0, -1}, "[0, 1000]"},
                     {{-3, -1}, "[1000, 333]"},
                     {{7, 7}, "[0, 0]"},
                     {{-1e308, 1e308}, "[0, 0]"}};
  gurobi->scriptAttr("IsMIP", 1);
  for (const Case& c : cases) {
    solver.clear();
    addVariables({1, 1}, {}, {{"priority", values(c.given)}});
    gurobi->takeCalls();
    solver.solve();
    EXPECT_THAT(callsWith({"BranchPriority"}), ElementsAre(HasSubstr(c.sent)));
  }
}

TEST_F(ProcedureTest, SmallModelsAreSolvedAgainWithoutPresolve) {
  const std::string again = "Resolving with presolve turned off.\n";
  const std::string unknown =
      "Gurobi reports the model to be either infeasible or unbounded.\n"
      "Use option 'rerun 1' or 'dualreductions 0' in a KAVO/Gurobi\n"
      "option file to determine the primal solution status.\n";
  struct Case {
    int variables, rows, rerun, second;
    std::string log;
  };
  const Case cases[]{{300, 300, -1, 5, again},   {300, 300, 0, 4, again + unknown}, {301, 300, 0, 5, unknown},
                     {300, 301, -1, 5, unknown}, {301, 301, 1, 3, again},           {301, 301, 1, 4, again + unknown}};
  set("Presolve", 2);
  for (const Case& c : cases) {
    gurobi->scriptAttr("NumVars", c.variables);
    gurobi->scriptAttr("NumConstrs", c.rows);
    gurobi->scriptAttr("Status", 4);
    set("rerun", c.rerun);
    gurobi->onCall(Fn::GRBoptimize, [&, n = 0]() mutable { gurobi->scriptAttr("Status", ++n == 1 ? 4 : c.second); });
    takeLog();
    gurobi->takeCalls();
    solver.solve();
    EXPECT_EQ(takeLog(), c.log);
    const Calls ran = callsWith({"GRBsetintparam", "optimize"});
    if (c.log == unknown) {
      EXPECT_THAT(ran, ElementsAre("GRBoptimize(m1)"));
    } else {
      EXPECT_THAT(ran, ElementsAre("GRBoptimize(m1)", R"(GRBsetintparam(m1.env, "Presolve", 0))", "GRBoptimize(m1)",
                                   R"(GRBsetintparam(m1.env, "presolve", 2))"))
          << "the next solve begins with the user's own setting";
    }
  }
  gurobi->scriptAttr("IsMIP", 1);
  solver.solve();
  EXPECT_EQ(takeLog(), "");
}

TEST_F(ProcedureTest, ConditionNumbersAreToldWhereTheyAreKnown) {
  gurobi->scriptAttr("Kappa", 12.5);
  set("kappa", 1);
  set("kappaexact", 1);
  solver.solve();
  EXPECT_EQ(takeLog(),
            "Exact condition number of the scaled basis matrix not available.\n"
            "Approximate condition number of the scaled basis matrix = 12.500000\n");
  EXPECT_EQ(solver.conditionNumber(false), 12.5);
  EXPECT_EQ(solver.conditionNumber(true), std::nullopt);
}

TEST_F(ProcedureTest, ARelaxationLetsGiveWayWhatHasAPreference) {
  addVariables({0, 1, 0}, {}, {{"feaspref", values<double>({4, 0, kNaN})}});
  addRows(2, {}, {{"feaspref", values<double>({-1, 0.5})}});
  set("feasopt", 1);
  set("iis", 2);
  gurobi->scriptRelaxation(2.25);
  gurobi->scriptAttr("ObjVal", 7);
  constexpr int kTypes[]{0, 0, 2, 2, 1, 1};
  for (int mode = 0; mode < 6; ++mode) {
    set("feasoptmode", mode);
    takeLog();
    gurobi->takeCalls();
    solver.solve();
    const char* pen = "[0.25, 1e+100, 1]";
    EXPECT_THAT(
        callsWith({"feasrelax", "optimize", "IIS", "IsMIP"}),
        ElementsAre(fmt::format("GRBfeasrelax(m1, {}, {}, {}, {}, [1e+100, 2], *)", kTypes[mode], mode % 2, pen, pen),
                    "GRBoptimize(m1)"));
    EXPECT_EQ(takeLog(), mode % 2 == 0 ? "Computing feasible relaxation\n"
                                       : "Computing feasible relaxation\n"
                                         "Value of minimum cost relaxation: 2.250000\n");
    EXPECT_EQ(solver.relaxation(), mode % 2 == 0 ? 7 : 2.25);
  }
  gurobi->scriptRelaxation(-1);
  solver.solve();
  EXPECT_EQ(solver.relaxation(), 7) << "stopped while it looked for the least: what the point costs";
  using Stop = tav::opt::StopReason;
  gurobi->scriptAttr("Status", 9);
  EXPECT_EQ(solver.stopReason(), Stop::time);
  gurobi->scriptAttr("Status", 2);  // the second search came to its end
  gurobi->defineParam({"TimeLimit", 1e100, 0, 1e100});
  EXPECT_EQ(solver.stopReason(), Stop::finished);
  gurobi->defineParam({"TimeLimit", 5.0, 0, 1e100});
  EXPECT_EQ(solver.stopReason(), Stop::time);
  solver.interrupt();
  EXPECT_EQ(solver.stopReason(), Stop::interrupted);
  gurobi->scriptAttr("Status", 3);
  EXPECT_EQ(solver.stopReason(), Stop::finished) << "nothing that may give way helps";
  gurobi->unscript("ObjVal");
  EXPECT_EQ(solver.relaxation(), std::nullopt) << "nothing that may give way helps";
}

class ConflictTest : public ProcedureTest {
 protected:
  ConflictTest() {
    addVariables({0, 0, 0});
    addRows(2);
    add(tag::kStaticBoundedDomain, tag::kQuadraticFunction,
        functions<Quadratic>(space(), {{{1, {}, {}, -2}, {0}, {0}, {1}}}));
    add(tag::kSosDomain, tag::kIdentityFunction, functions(space(), {{0, {0, 1}, {1, 1}}}));
    gurobi->scriptElements("IISLB", {1, 0, 1});
    gurobi->scriptElements("IISUB", {0, 0, 1});
    gurobi->scriptElements("IISConstr", {0, 1});
    gurobi->scriptElements("QCRHS", {2});
    gurobi->scriptElements("QCSense", {'<'});
    gurobi->scriptElements("IISQConstr", {1});
    gurobi->scriptElements("IISSOS", {0});
    gurobi->scriptAttr("IISMinimal", 1);
  }
};

TEST_F(ConflictTest, IsToldInTheLogAndKept) {
  set("iis", 2);
  gurobi->takeCalls();
  solver.solve();
  EXPECT_THAT(callsWith({"IIS\"", "computeIIS", "optimize"}), ElementsAre("GRBcomputeIIS(m1)"));
  EXPECT_EQ(takeLog(),
            "Computing IIS...\nNumber of variable bounds in the IIS: 3\n"
            "0.000000 < C0\n0.000000 < C2 < 5.000000\n"
            "Number of linear constraints in the IIS: 1\nR1 < 4.000000\n"
            "Number of linear constraints in the IIS: 1\n < 2.000000\n"
            "Number of SOS constraints in the IIS: 1\n");
  EXPECT_EQ(solver.stopReason(), tav::opt::StopReason::notRun);
  const auto found = solver.conflict();
  ASSERT_TRUE(found);
  EXPECT_TRUE(found->isMinimal);
  EXPECT_THAT(found->lowerBounds, ElementsAre(0, 2));
  EXPECT_THAT(found->upperBounds, ElementsAre(2));
  EXPECT_THAT(found->rows, ElementsAre(1));
  EXPECT_THAT(found->quadraticRows, ElementsAre(0));
  EXPECT_THAT(found->sets, IsEmpty()) << "by the sets' own attribute";

  gurobi->scriptAttr("IISMinimal", 0);
  gurobi->unscript("IISLB");  // not handed out: none rather than whatever stood there
  solver.solve();
  EXPECT_THAT(takeLog(),
              HasSubstr("Computing IIS...\nIIS construction terminated prematurely. IIS may not be minimal!\n"
                        "Number of variable bounds in the IIS: 1\nC2 < 5.000000\nNumber"));
}

TEST_F(ConflictTest, IsSoughtAfterASolveThatEndedInfeasibleOnly) {
  for (int status = 1; status < 20; ++status) {
    gurobi->scriptAttr("Status", status);
    for (const int iis : {0, 1}) {
      set("iis", iis);
      set("rerun", 0);
      gurobi->takeCalls();
      solver.solve();
      const bool wanted = iis == 1 && (status == 3 || status == 4 || status == 19);
      EXPECT_EQ(gurobi->count(Fn::GRBcomputeIIS), wanted ? 1 : 0) << status;
      EXPECT_EQ(solver.conflict().has_value(), wanted);
    }
  }
}

// Every call of a solve that does as much as one can is made to fail once.
TEST_F(ConflictTest, ACallThatFailsEndsTheSolveAndTheNextOneBeginsAsTheUserSetIt) {
  for (const bool isMip : {false, true}) {
    gurobi->scriptAttr("IsMIP", isMip);
    gurobi->scriptAttr("Status", 4);
    for (const char* option : {"iis", "rerun", "kappa", "mipstart", "varhint"}) set(option, 1);
    const auto start = ofVariables(VQ::starts);
    gurobi->scriptAttr("Kappa", 1);
    int nth = 1;
    for (bool failed = true; failed && nth < 100; ++nth) {
      SCOPED_TRACE(testing::Message() << isMip << ", call " << nth);
      start.set(0, 1, 0);
      gurobi->failAnyCall(nth, 10003, "told by Gurobi");
      std::string message;
      try {
        solver.solve();
      } catch (const tav::Exception& error) {
        message = error.message();
      }
      failed = !gurobi->failurePending();
      if (!failed) break;
      const std::string name(fnName(*gurobi->lastFailed()));
      const bool isUnchecked = name.ends_with("array") || name.ends_with("list") || name == "GRBupdatemodel";
      if (!isUnchecked) {
        EXPECT_EQ(message, "told by Gurobi") << name;
      }
      // Whatever the failed solve had moved is back before the next one solves.
      gurobi->onCall(Fn::GRBoptimize, [&, first = true]() mutable {
        auto& params = gurobi->model(1).env.params;
        if (std::exchange(first, false) && params.contains("presolve")) {
          EXPECT_EQ(params["presolve"], gurobi_double::ParamValue(-1));
        }
        if (params.contains("startnumber")) {
          EXPECT_EQ(params["startnumber"], gurobi_double::ParamValue(0));
        }
      });
      EXPECT_NO_THROW(solver.solve());
    }
    EXPECT_GT(nth, 25);
    EXPECT_LT(nth, 100);
    gurobi->failAnyCall(1000, 10001, "");  // none
  }
}

TEST_F(ProcedureTest, ChangesAreSentOnceRowByRow) {
  addVariables({0, 0, 0});
  addRows(3);
  solver.queueCoefficients(2, {0, 2}, {1.5, 2.5});
  solver.queueCoefficients(0, {1}, {7});
  solver.queueCoefficients(1, {}, {});
  solver.queueCoefficients(2, {0}, {3.5});  // the last word counts
  solver.queueObjective({2, 0}, {5, 6});
  set("usebasis", 0);
  gurobi->takeCalls();
  solver.solve();
  EXPECT_THAT(callsWith({"chgcoeffs", "\"Obj\"", "optimize"}),
              ElementsAre("GRBXchgcoeffs(m1, 1, [0], [1], [7])", "GRBXchgcoeffs(m1, 2, [2, 2], [0, 2], [3.5, 2.5])",
                          R"(GRBsetdblattrlist(m1, "Obj", 2, [0, 2], [6, 5]))", "GRBoptimize(m1)"));
  solver.solve();
  EXPECT_THAT(callsWith({"chgcoeffs", "\"Obj\""}), IsEmpty());

  using Positions = std::vector<int>;
  using Numbers = std::vector<double>;
  for (const auto& [row, columns, numbers] : {std::tuple{3, Positions{0}, Numbers{1}},
                                              {-1, Positions{0}, Numbers{1}},
                                              {0, Positions{3}, Numbers{1}},
                                              {0, Positions{0}, Numbers{1, 2}},
                                              {0, Positions{0}, Numbers{kNaN}}}) {
    EXPECT_THROW(solver.queueCoefficients(row, columns, numbers), tav::CheckException);
  }
  EXPECT_THROW(solver.queueObjective({3}, {1}), tav::CheckException);
  solver.solve();
  EXPECT_THAT(callsWith({"chgcoeffs", "\"Obj\""}), IsEmpty()) << "nothing of what is refused is kept";
}

}  // namespace
}  // namespace grb
