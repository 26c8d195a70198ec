// Models that are more than linear: what reaches Gurobi, and what comes back on the user's own elements.
#include "tests/brel/every_kind.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>

#include "tests/brel/formula.h"

namespace brel_test {
namespace {

using gurobi_double::Fn;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* kBlock = R"(GRBgetintattr(m1, "NumVars", *))";  // the head of every block

using EveryKindTest = LinkFixture;

// The calls that load the model, without the updates at the heads of the blocks.
std::vector<std::string> loading(LinkOverDouble& link) {
  link.gurobi->hide(Fn::GRBupdatemodel);
  auto calls = link.gurobi->calls();
  const auto first = std::find(calls.begin(), calls.end(), kBlock);
  const auto solve = std::find(first, calls.end(), R"(GRBgetintparam(m1.env, "PDHGGPU", *))");
  return {first, solve};
}

TEST_F(EveryKindTest, ReachesGurobiInOrder) {
  fillEveryKind(model);
  ASSERT_EQ(openAndSolve(model), KAVO_OK) << kavo_last_error();
  EXPECT_THAT(
      loading(link),
      ElementsAre(
          kBlock,
          "GRBaddvars(m1, 8, 0, null, null, null, null, [0, -2, 0, 0, 0, 0, 0, 1], [4, 5, 1, 3, 5, 1, 1, 2], ['C', "
          "'C', 'I', 'C', 'C', 'I', 'I', 'C'], null)",
          R"(GRBsetstrattrelement(m1, "VarName", 0, "x"))", R"(GRBsetstrattrelement(m1, "VarName", 1, "y"))",
          R"(GRBsetstrattrelement(m1, "VarName", 2, "b"))", R"(GRBsetstrattrelement(m1, "VarName", 3, "w"))",
          R"(GRBsetstrattrelement(m1, "VarName", 4, "size_abs1"))",
          R"(GRBsetstrattrelement(m1, "VarName", 5, "either_cmp3"))",
          R"(GRBsetstrattrelement(m1, "VarName", 6, "either_cmp5"))",
          R"(GRBsetstrattrelement(m1, "VarName", 7, "size_range8"))",
          // linear rows: the user's, those that rules made
          kBlock, R"(GRBaddconstr(m1, 2, [0, 1], [1, 1], 'G', 1, "plain"))",
          R"(GRBsetintattrarray(m1, "Lazy", 0, 1, [1]))", kBlock,
          R"(GRBaddconstr(m1, 2, [5, 6], [1, 1], 'G', 1, "either_one7"))",
          R"(GRBaddconstr(m1, 2, [0, 1], [2, 1], 'L', 5, "affine"))",
          R"(GRBaddconstr(m1, 2, [4, 7], [1, -1], 'E', 0, "size"))",
          R"(GRBsetintattrarray(m1, "Lazy", 1, 3, [0, 2, 0]))",
          // quadratic rows
          kBlock, R"(GRBaddqconstr(m1, 1, [0], [1], 2, [0, 1], [1, 1], [1, 2], 'L', 6, "quadratic"))",
          // ordered sets
          kBlock, "GRBaddsos(m1, 1, 2, [1], [0], [0, 3], [2, 5])",
          "GRBaddsos(m1, 1, 3, [2], [0], [0, 1, 3], [1, 2, 3])",
          // indicators
          kBlock, R"(GRBaddgenconstrIndicator(m1, "either_then4", 5, 1, 1, [0], [1], 'L', 1))",
          R"(GRBaddgenconstrIndicator(m1, "either_then6", 6, 1, 1, [1], [-1], 'L', -3))",
          R"(GRBaddgenconstrIndicator(m1, "switched", 2, 0, 2, [0, 3], [1, 1], 'L', 2))",
          // nonlinear rows
          kBlock, R"(GRBaddgenconstrAbs(m1, "size_func2", 4, 1))", R"(GRBaddconstr(m1, 1, [3], [1], 'E', 1, "sine"))",
          "GRBaddvar(m1, 1, [4], [1], 0, -1e+100, 1e+100, 'C', null)",
          R"(GRBaddgenconstrNL(m1, "sine", 8, 2, [9, 1], [-1, 0], [-1, 0]))",
          // the objective
          kBlock, R"(GRBsetintattr(m1, "ModelSense", -1))", "GRBaddqpterms(m1, 1, [0], [0], [-1])",
          R"(GRBsetdblattrarray(m1, "Obj", 0, 2, [1, 1]))", R"(GRBsetdblattr(m1, "ObjCon", 10))"));
}

TEST(EveryKindEach, SendsTheObjectiveAsWhatItIs) {
  struct Case {
    const char* formula;
    std::vector<std::string> calls;
  };
  const std::string minimize = R"(GRBsetintattr(m1, "ModelSense", 1))", linear = R"(GRBsetdblattrarray(m1, "Obj", )";
  for (const Case& c :
       {Case{"(minus 7 (plus x1 x0))", {minimize, linear + "1, 1, [-1])", R"(GRBsetdblattr(m1, "ObjCon", 7))"}},
        Case{"(times x0 (plus x1 2))",
             {minimize, "GRBaddqpterms(m1, 1, [0], [1], [1])", linear + "0, 1, [3])",
              R"(GRBsetdblattr(m1, "ObjCon", 0))"}},
        Case{"(plus (exp x1) 5)",
             {minimize, linear + "0, 1, [1])", R"(GRBsetdblattr(m1, "ObjCon", 5))",
              "GRBaddvar(m1, 0, null, null, 1, -1e+100, 1e+100, 'C', null)",
              "GRBaddgenconstrNL(m1, null, 2, 2, [13, 1], [-1, 1], [-1, 0])"}}}) {
    LinkOverDouble link;
    HostModel model;
    model.add({{"", 0, 1}, {"", 0, 1}}, {});
    model.addObjective(KAVO_MINIMIZE, {1});
    const int first = 0, expression = addFormula(model, c.formula);
    ASSERT_EQ(kavo_set_expressions(model, KAVO_OBJECTIVE, 1, &first, &expression), KAVO_OK) << kavo_last_error();
    ASSERT_EQ(openAndSolve(model), KAVO_OK) << kavo_last_error();
    auto calls = loading(link);
    calls.erase(calls.begin(), std::find(calls.begin() + 1, calls.end(), kBlock) + 1);
    EXPECT_EQ(calls, c.calls) << c.formula;
  }
}

// At x = 2, y = -1.5, b = 1, w = 0.5; Gurobi's own columns have other values, which count for nothing.
TEST_F(EveryKindTest, GivesResultsOnTheUsersOwnElements) {
  fillEveryKind(model);
  const std::vector<double> rest{-9, -9, -9, -9, -9};
  std::vector<double> point{2, -1.5, 1, 0.5};
  point.insert(point.end(), rest.begin(), rest.end());
  link.scriptMip(point, {0.5, -9, -9, -9, -9});
  ASSERT_EQ(openAndSolve(model), KAVO_OK) << kavo_last_error();
  EXPECT_THAT(model.results(), HasSubstr("primal: 2 -1.5 1 0.5\n"
                                         "activity: 0.5 5.5 3.5 2.5 1.4092974268256817 1.5\n"
                                         "slacks: -0.5 2.5 2.5 -0.5 -0.4092974268256817 0.5\n"
                                         "violation of kind 0: 0.5 at 0\n"
                                         "violation of kind 3: 1 at 0\n"
                                         "violation of kind 4: 0.5 at 0\n"));
}

TEST_F(EveryKindTest, KnowsDualsOfRowsThatWereSentAsSuch) {
  fillEveryKind(model);
  link.scriptLp(std::vector<double>(9), std::vector<double>(5));
  link.gurobi->scriptElements("QCPi", {70});
  ASSERT_EQ(openAndSolve(model), KAVO_OK) << kavo_last_error();
  EXPECT_THAT(model.results(), HasSubstr("duals: 1 3 70 nan nan 4\n"));
  const std::string path = testing::TempDir() + "every_kind.sol";
  ASSERT_EQ(kavo_write_sol(model, path.c_str(), "solved", -1), KAVO_OK) << kavo_last_error();
  std::ifstream file(path);
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  EXPECT_THAT(text, HasSubstr("\n1\n3\n70\n0\n0\n4\n")) << "the format has no word for what is unknown";
}

// A model whose expressions turn out to be linear has a basis, as any linear one.
TEST_F(EveryKindTest, TakesTheBasisOfRowsThatAreLinear) {
  model.add({{"x", 0, 4}},
            {{"ranged", 1, {}, 3}, {"inner", 1, {}, 3}, {"below", -kNone, {}, 6}, {"free", -kNone, {}, kNone}});
  const int rows[] = {0, 1, 2, 3}, sum = addFormula(model, "(plus x0 1)"), expressions[] = {sum, sum, sum, sum};
  ASSERT_EQ(kavo_set_expressions(model, KAVO_ROW, 4, rows, expressions), KAVO_OK);
  link.scriptLp({2, 3, 3}, {0, 0, -3});
  link.gurobi->scriptElements("VBasis", {0, -2, 0});  // of x and the columns of the two rows with two sides
  link.gurobi->scriptElements("CBasis", {-1, -1, 0});
  ASSERT_EQ(openAndSolve(model), KAVO_OK) << kavo_last_error();
  EXPECT_THAT(model.results(), HasSubstr("activity: 3 3 3 3\n"
                                         "duals: 1 2 3 0\n"
                                         "slacks: 0 0 3 inf\n"
                                         "rows' basis: 2 3 3 3\n"));
}

TEST(EveryKindEach, CountsViolationsWhereARowHolds) {
  struct Case {
    std::vector<double> point;  // x, b, y
    const char* violations;
  };
  for (const Case& c : {
           Case{{3, 0, 1}, ""},                                                        // switched off
           Case{{3, 1, 1}, "violation of kind 0: 1 at 0\n"},                           // on
           Case{{3, 0.9999, 1}, "violation of kind 2: 9.999999999998899e-05 at 1\n"},  // neither on nor off
           Case{{1, 0, -1},
                "violation of kind 0: inf at 1\nviolation of kind 3: 1 at 0\n"},  // log of a negative number
           Case{{0.9999995, 0, 0.9999995}, ""},                                   // within the tolerance
       }) {
    LinkOverDouble link;
    HostModel model;
    model.add({{"", 0, 4}, {"", 0, 1, KAVO_BINARY}, {"", -2, 2}},
              {{"", -kNone, {{0, 1}}, 2}, {"", -kNone, {}, 5}, {"", 1, {}, kNone}});
    const int switched = 0, column = 1, nonlinear[] = {1, 2};
    ASSERT_EQ(kavo_set_indicators(model, 1, &switched, &column, nullptr), KAVO_OK);
    const int functions[] = {addFormula(model, "(log x2)"), addFormula(model, "(floor x0)")};
    const int atLeast = addFormula(model, "(>= x2 1)");
    ASSERT_EQ(kavo_set_expressions(model, KAVO_ROW, 2, nonlinear, functions), KAVO_OK);
    ASSERT_EQ(kavo_add_logical(model, 1, &atLeast, nullptr), KAVO_OK);
    std::vector<double> point = c.point;
    point.resize(5);  // the whole number of floor, and a column of Gurobi's own
    link.scriptMip(point, std::vector<double>(5));
    ASSERT_EQ(openAndSolve(model), KAVO_OK) << kavo_last_error();
    EXPECT_THAT(model.results(), testing::EndsWith(std::string("\n") + c.violations)) << c.point[0];
  }
}

TEST_F(EveryKindTest, RefusesBeforeGurobiIsStarted) {
  model.add({{"x", 0, 4}}, {{"odd", 1, {}, 1}});
  const int row = 0, expression = addFormula(model, "(power 0 0)");
  ASSERT_EQ(kavo_set_expressions(model, KAVO_ROW, 1, &row, &expression), KAVO_OK) << kavo_last_error();
  EXPECT_EQ(openAndSolve(model), KAVO_LINK);
  EXPECT_THAT(kavo_last_error(), HasSubstr("row odd"));
  EXPECT_EQ(link.gurobi->count(Fn::GRBstartenv), 0);
}

}  // namespace
}  // namespace brel_test
