// Whole solves through the link, with the double in Gurobi's place.
#include "brel/link.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <thread>

#include "tests/brel/host.h"

namespace brel_test {
namespace {

using gurobi_double::Fn;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using LinkTest = LinkFixture;

TEST_F(LinkTest, CallsGurobiInOrder) {
  link.scriptLp({1, 2, 1, 3}, {1, 0, 2});
  fill(model, KAVO_CONTINUOUS);
  const int index[] = {0, 1, 3};
  const double partitions[] = {-4, 2}, lazy[] = {1, 2, 3};
  ASSERT_EQ(kavo_set_suffix(model, KAVO_COLUMN, "partition", 2, index, partitions), KAVO_OK);
  ASSERT_EQ(kavo_set_suffix(model, KAVO_ROW, "lazy", 3, index, lazy), KAVO_OK);
  link.gurobi->defineParam({"TimeLimit", 1e100, 0, 1e100});
  ASSERT_EQ(kavo_set_option(model, "TimeLimit", "60", nullptr, 0), KAVO_OK);
  ASSERT_EQ(openAndSolve(model), KAVO_OK) << kavo_last_error();
  for (const Fn lookUp : {Fn::GRBgetparamtype, Fn::GRBgetdblparaminfo, Fn::GRBisattravailable})
    link.gurobi->hide(lookUp);
  const auto calls = link.gurobi->calls();
  const auto resultsFrom = std::find(calls.begin(), calls.end(), "GRBoptimize(m1)") + 2;
  EXPECT_THAT(
      std::vector<std::string>(calls.begin(), resultsFrom),
      ElementsAre(
          "GRBemptyenvinternal(*, 13, 0, 2)", R"(GRBsetintparam(e1, "LogToConsole", 0))", "GRBstartenv(e1)",
          R"(GRBnewmodel(e1, *, "", 0, null, null, null, null, null))", R"(GRBsetdblparam(m1.env, "TimeLimit", 60))",
          // variables
          "GRBupdatemodel(m1)", R"(GRBgetintattr(m1, "NumVars", *))",
          "GRBaddvars(m1, 4, 0, null, null, null, null, [0, -1e+20, 0, 1], [4, 1e+20, 9, 5], ['C', 'C', 'C', 'C'], "
          "null)",
          R"(GRBsetintattrarray(m1, "Partition", 0, 4, [-1, 2, -1, -1]))",
          R"(GRBsetstrattrelement(m1, "VarName", 0, "x"))", R"(GRBsetstrattrelement(m1, "VarName", 1, "y"))",
          R"(GRBsetstrattrelement(m1, "VarName", 2, "z"))", R"(GRBsetstrattrelement(m1, "VarName", 3, "range_range"))",
          // rows
          "GRBupdatemodel(m1)", R"(GRBgetintattr(m1, "NumVars", *))",
          R"(GRBaddconstr(m1, 2, [0, 1], [1, 1], 'G', 2, "low"))",
          R"(GRBaddconstr(m1, 3, [0, 2, 3], [1, 2, -1], 'E', 0, "range"))",
          R"(GRBaddconstr(m1, 1, [2], [1], 'L', 3, "high"))", R"(GRBsetintattrarray(m1, "Lazy", 0, 3, [1, 2, 3]))",
          // objective
          "GRBupdatemodel(m1)", R"(GRBgetintattr(m1, "NumVars", *))", R"(GRBsetintattr(m1, "ModelSense", -1))",
          R"(GRBsetdblattrarray(m1, "Obj", 0, 3, [1, 0, 2]))", R"(GRBsetdblattr(m1, "ObjCon", 10))",
          // solve
          "GRBupdatemodel(m1)", R"(GRBgetintparam(m1.env, "PDHGGPU", *))", "GRBsetlogcallbackfunc(m1, *, *)",
          R"(GRBgetintattr(m1, "IsMIP", *))", R"(GRBgetintattr(m1, "NumQNZs", *))",
          R"(GRBgetintattr(m1, "NumQCNZs", *))", "GRBoptimize(m1)", R"(GRBgetintattr(m1, "Status", *))"));
  EXPECT_THAT(std::vector<std::string>(resultsFrom, calls.end()), testing::Each(testing::StartsWith("GRBget")));
  EXPECT_EQ(link.gurobi->count(Fn::GRBgetdblattrarray), 4) << "one per quantity: X, RC, Slack, Pi";
  EXPECT_EQ(link.gurobi->count(Fn::GRBgetintattrarray), 2) << "VBasis, CBasis";
}

TEST_F(LinkTest, WritesResultsOnTheUsersOwnElements) {
  // Activities by the slacks: low 2 - (-1) = 3, range 0 - 0.5 + s = 4.5, high 3 - 2 = 1.
  link.scriptLp({1, 2, 1.5, 5}, {-1, 0.5, 2});
  fill(model, KAVO_CONTINUOUS);
  ASSERT_EQ(openAndSolve(model), KAVO_OK) << kavo_last_error();
  EXPECT_EQ(model.results(),
            "optimal, finished, objective 12.5, bound 12, gap 0.04, iterations 7, nodes 3, solutions 1\n"
            "primal: 1 2 1.5\n"
            "reduced costs: 1 2 3\n"
            "columns' basis: 2 2 2\n"
            "activity: 3 4.5 3.5 1\n"
            "duals: 1 2 0 3\n"
            "slacks: 1 0.5 inf 2\n"
            "rows' basis: 1 2 3 2\n");
}

TEST_F(LinkTest, InventsNothingThatTheSolverDoesNotHave) {
  link.scriptMip({1, 2, 1.5, 5}, {-1, 0.5, 2});
  fill(model, KAVO_INTEGER);
  ASSERT_EQ(openAndSolve(model), KAVO_OK) << kavo_last_error();
  EXPECT_EQ(model.results(),
            "optimal, finished, objective 12.5, bound 12, gap 0.04, iterations 7, nodes 3, solutions 1\n"
            "primal: 1 2 1.5\n"
            "activity: 3 4.5 3.5 1\n"
            "slacks: 1 0.5 inf 2\n"
            "violation of kind 2: 0.5 at 2\n");

  link.gurobi->scriptAttr("Status", 9);
  link.gurobi->scriptAttr("SolCount", 0);
  ASSERT_EQ(kavo_solve(model), KAVO_OK) << kavo_last_error();
  EXPECT_EQ(model.results(),
            "unknown, time_limit, objective nan, bound 12, gap nan, iterations 7, nodes 3, solutions 0\n")
      << "without a point, what Gurobi still holds is none";
}

// The checks are the framework's own, on the user's model.
TEST_F(LinkTest, ChecksThePointAgainstTheUsersModel) {
  model.add({{"b", -5, 5, KAVO_BINARY}, {"s", 2, 3, KAVO_SEMICONTINUOUS}, {"x", 0, 1}},
            {{"low", 2, {{0, 1}, {2, 1}}, kNone}, {"high", -kNone, {{2, 2}}, 1}});
  link.scriptMip({1.25, 0, -0.125}, {0, 0});
  ASSERT_EQ(openAndSolve(model), KAVO_OK) << kavo_last_error();
  EXPECT_THAT(model.results(), HasSubstr("violation of kind 0: 0.875 at 0\n"
                                         "violation of kind 1: 0.25 at 0\n"
                                         "violation of kind 2: 0.25 at 0\n"));
  link.gurobi->scriptElements("X", {1, 1.5, 1});
  ASSERT_EQ(kavo_solve(model), KAVO_OK) << kavo_last_error();
  EXPECT_THAT(model.results(), HasSubstr("violation of kind 0: 1 at 1\n"
                                         "violation of kind 1: 0.5 at 1\n"));
}

TEST_F(LinkTest, WithholdsNamesThatGurobiWouldNotTakeAndSaysSo) {
  link.scriptLp({0, 0, 0, 0}, {0});
  const std::string longest(255, 'n'), tooLong(256, 'n'), accented = "\xc3\xa4";
  model.add({{longest.c_str(), 0, 1}, {tooLong.c_str(), 0, 1}, {"two words", 0, 1}, {accented.c_str(), 0, 1}},
            {{"tab\t", 0, {{0, 1}}, kNone}, {"dropped row", -kNone, {{0, 1}}, kNone}});
  ASSERT_EQ(openAndSolve(model), KAVO_OK) << kavo_last_error();
  const auto calls = link.gurobi->calls();
  for (const auto& [position, sent] : {std::pair(0, longest), std::pair(3, accented)}) {
    EXPECT_THAT(calls,
                testing::Contains(fmt::format(R"(GRBsetstrattrelement(m1, "VarName", {}, "{}"))", position, sent)));
  }
  EXPECT_EQ(link.gurobi->count(Fn::GRBsetstrattrelement), 2);
  EXPECT_THAT(calls, testing::Contains(R"(GRBaddconstr(m1, 1, [0], [1], 'G', 0, ""))"));
  constexpr const char* kWhy =
      "names are longer than 255 bytes or hold blanks or odd characters; they are not sent to the solver";
  EXPECT_THAT(model.notes(), ElementsAre(fmt::format("2 variable {}", kWhy), fmt::format("2 row {}", kWhy)));
}

TEST_F(LinkTest, SendsTheChosenObjectiveOrNone) {
  link.scriptLp({0, 0}, {});
  model.add({{"", 0, 1}, {"", 0, 1}}, {});
  model.addObjective(KAVO_MINIMIZE, {1, 2}, 3);
  model.addObjective(KAVO_MAXIMIZE, {4, 5}, 6);
  ASSERT_EQ(kavo_open_link(model, FORWARD_LINK), KAVO_OK);
  const auto objectiveCalls = [&] {
    EXPECT_EQ(kavo_solve(model), KAVO_OK) << kavo_last_error();
    auto calls = link.gurobi->takeCalls();
    std::erase_if(calls, [](const auto& call) {
      return call.find("\"Obj\"") == std::string::npos && call.find("ModelSense") == std::string::npos;
    });
    return calls;
  };
  EXPECT_THAT(objectiveCalls(),
              ElementsAre(R"(GRBsetintattr(m1, "ModelSense", 1))", R"(GRBsetdblattrarray(m1, "Obj", 0, 2, [1, 2]))"));
  ASSERT_EQ(kavo_set_objective_number(model, 2), KAVO_OK);
  EXPECT_THAT(objectiveCalls(),
              ElementsAre(R"(GRBsetintattr(m2, "ModelSense", -1))", R"(GRBsetdblattrarray(m2, "Obj", 0, 2, [4, 5]))"));
  ASSERT_EQ(kavo_set_objective_number(model, 0), KAVO_OK);
  EXPECT_THAT(objectiveCalls(), IsEmpty());
}

TEST_F(LinkTest, HandsGurobisLogToTheHostAndStopsWhenAsked) {
  link.gurobi->scriptAttr("Status", 11);
  std::string log;
  const auto append = [](const char* text, std::size_t length, void* data) {
    static_cast<std::string*>(data)->append(text, length);
  };
  ASSERT_EQ(kavo_set_log(model, append, &log), KAVO_OK);
  ASSERT_EQ(kavo_open_link(model, FORWARD_LINK), KAVO_OK);
  link.gurobi->onCall(Fn::GRBoptimize, [&] {
    link.gurobi->fireLog(link.gurobi->model(1), "Optimize a model\n");
    EXPECT_EQ(kavo_interrupt(model, KAVO_STOP_HOST), KAVO_OK);
    for (int i = 0; i < 5000 && link.gurobi->count(Fn::GRBterminate) == 0; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  });
  ASSERT_EQ(kavo_solve(model), KAVO_OK) << kavo_last_error();
  EXPECT_GT(link.gurobi->count(Fn::GRBterminate), 0);
  EXPECT_EQ(log, "Gurobi 13.0.2 (recording double)\nOptimize a model\n");
  EXPECT_THAT(model.results(), testing::StartsWith("unknown, interrupted"));
}

// Coefficients of the rows first, as Gurobi's queue has it; a row with two sides changes by its column's bounds, a row
// without any has nothing to change.
TEST_F(LinkTest, GoesOnWithTheSolversModelWhenNumbersHaveChanged) {
  link.scriptLp({1, 2, 1, 3}, {1, 0, 2});
  fill(model, KAVO_CONTINUOUS);
  ASSERT_EQ(openAndSolve(model), KAVO_OK) << kavo_last_error();
  link.gurobi->takeCalls();
  const int rows[] = {3, 1, 2, 1}, columns[] = {0, 2, 1, 0};
  const double values[] = {7, 0, 5, -1}, lower[] = {-1e20, 2, -1e20}, upper[] = {6, 4, 1e20}, constant = 1;
  ASSERT_EQ(kavo_change_coefficients(model, 4, rows, columns, values), KAVO_OK) << kavo_last_error();
  ASSERT_EQ(kavo_change_sides(model, 3, rows, lower, upper), KAVO_OK);
  ASSERT_EQ(kavo_change_bounds(model, 1, columns, values, nullptr), KAVO_OK);
  ASSERT_EQ(kavo_change_objective(model, 0, &constant, 1, columns + 2, values), KAVO_OK);
  ASSERT_EQ(kavo_solve(model), KAVO_OK) << kavo_last_error();
  auto calls = link.gurobi->takeCalls();
  std::erase_if(calls, [](const auto& call) {
    return call.find("GRBset") != 0 && call.find("GRBXchg") != 0 && call.find("GRBadd") != 0;
  });
  EXPECT_THAT(calls,
              ElementsAre(R"(GRBsetdblattrlist(m1, "LB", 2, [0, 3], [7, 2]))",
                          R"(GRBsetdblattrlist(m1, "UB", 2, [0, 3], [4, 4]))", R"(GRBsetdblattr(m1, "ObjCon", 1))",
                          "GRBsetlogcallbackfunc(m1, *, *)", "GRBXchgcoeffs(m1, 2, [1, 1], [0, 2], [-1, 0])",
                          "GRBXchgcoeffs(m1, 1, [2], [0], [7])", R"(GRBsetdblattrlist(m1, "Obj", 1, [1], [7]))",
                          R"(GRBsetdblattrlist(m1, "RHS", 1, [2], [6]))"));
  // A row that loses a side is another one.
  ASSERT_EQ(kavo_change_sides(model, 1, rows + 1, lower, nullptr), KAVO_OK);
  ASSERT_EQ(kavo_solve(model), KAVO_OK) << kavo_last_error();
  EXPECT_EQ(link.gurobi->count(Fn::GRBaddvars), 1);
}

TEST_F(LinkTest, TellsTheSolverBeforeAnySolve) {
  ASSERT_EQ(kavo_open_link(model, FORWARD_LINK), KAVO_OK);
  const char* text = nullptr;
  ASSERT_EQ(kavo_solver_text(model, &text), KAVO_OK);
  EXPECT_STREQ(text, "Gurobi 13.0.2 (recording double)");
  EXPECT_EQ(link.gurobi->count(Fn::GRBstartenv), 0);
  brel::Link unbound(nullptr, {});
  EXPECT_EQ(unbound.readyAPI(nullptr), 1);
  EXPECT_EQ(unbound.callSolver(), 1);
  EXPECT_EQ(unbound.modifyProblem(), 1);
}

TEST_F(LinkTest, NamesTheElementWhoseBoundsCross) {
  link.gurobi->scriptAttr("Status", 3);
  model.add({{"b", 2, 5, KAVO_BINARY}}, {{"r", 3, {{0, 1}}, 1}});
  ASSERT_EQ(openAndSolve(model), KAVO_OK) << kavo_last_error();
  EXPECT_THAT(model.results(), testing::StartsWith("infeasible, finished"));
  EXPECT_THAT(model.notes(), ElementsAre("column b has lower bound 2 above upper bound 1",
                                         "row r has lower bound 3 above upper bound 1"));
}

}  // namespace
}  // namespace brel_test
