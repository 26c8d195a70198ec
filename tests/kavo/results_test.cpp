// What a solve gives besides a point: ranges, pool, conflict, relaxation, fixed model; in C, in JSON and in .sol files.

#include <gmock/gmock.h>

#include <cmath>

#include "fixture.h"

namespace kavo_test {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// Six columns (the second is called `a "b"`), linear, quadratic, nonlinear, switched and nameless rows, a logical
// constraint, a set, two objectives.
void fillEveryKind(trpRec* model) {
  const double lower[] = {0, 2, -1e20, 0, 0, 3}, upper[] = {3, 2, 1e20, 1, 1, 5};
  const unsigned char type[] = {KAVO_CONTINUOUS, KAVO_CONTINUOUS, KAVO_CONTINUOUS,
                                KAVO_CONTINUOUS, KAVO_BINARY,     KAVO_SEMICONTINUOUS};
  const char* names[] = {"x", "a \"b\"", "z", "u", "v", "s"};
  const double sides[] = {1, -1e20, -1e20, 7, 6}, tops[] = {4, 9, 9, 1e20, 6};
  const std::size_t start[] = {0, 2, 3, 4, 5, 7};
  const int columns[] = {0, 1, 0, 0, 0, 0, 2};
  const double values[] = {1, 1, 1, 1, 1, 1, 1}, two = 2;
  const char* rows[] = {"c1", "q", "n", "w", ""};
  ASSERT_EQ(kavo_add_columns(model, 6, lower, upper, type, names), KAVO_OK) << kavo_last_error();
  ASSERT_EQ(kavo_add_rows(model, 5, sides, tops, start, columns, values, rows), KAVO_OK) << kavo_last_error();
  const std::size_t nodeStart[] = {0, 2, 5};
  const int op[] = {KAVO_OP_VARIABLE, KAVO_OP_EXP, KAVO_OP_VARIABLE, KAVO_OP_NUMBER, KAVO_OP_LESS_EQUAL};
  const int index[] = {2, 0, 2, 0, 0};
  const double number[] = {0, 0, 0, 5, 0};
  int first = -1;
  ASSERT_EQ(kavo_add_expressions(model, 2, nodeStart, op, index, number, &first), KAVO_OK) << kavo_last_error();
  const int quadraticRow = 1, nonlinearRow = 2, switchedRow = 3, binary = 4, logical = first + 1, zero = 0;
  const std::size_t one[] = {0, 1}, twoMembers[] = {0, 2};
  ASSERT_EQ(kavo_add_quadratic_terms(model, KAVO_ROW, 1, &quadraticRow, one, &zero, &zero, &two), KAVO_OK);
  ASSERT_EQ(kavo_set_expressions(model, KAVO_ROW, 1, &nonlinearRow, &first), KAVO_OK);
  ASSERT_EQ(kavo_set_indicators(model, 1, &switchedRow, &binary, nullptr), KAVO_OK);
  const char *logicalName = "l", *setName = "sos";
  const unsigned char setType = 1;
  ASSERT_EQ(kavo_add_logical(model, 1, &logical, &logicalName), KAVO_OK);
  ASSERT_EQ(kavo_add_sets(model, 1, &setType, twoMembers, columns + 5, nullptr, &setName), KAVO_OK);
  ASSERT_EQ(kavo_add_objective(model, KAVO_MAXIMIZE, 0, 1, &zero, &two, "profit"), KAVO_OK);
  ASSERT_EQ(kavo_add_objective(model, KAVO_MINIMIZE, 0, 1, &zero, &two, nullptr), KAVO_OK);
}

// One thing that a link gives, and how the files show it: a field of the JSON object, and a piece of the .sol file.
struct Case {
  const char *what, *script, *field, *value, *sol;
};

constexpr const char* kConflictTable =
    "0\tnon\tnot in the conflict\n1\tlow\tlower bound or side\n2\tfix\tfixed\n3\tupp\tupper bound or side\n"
    "4\tmem\tmember\n5\tpmem\tpossible member\n6\tplow\tpossibly the lower bound or side\n"
    "7\tpupp\tpossibly the upper bound or side\n";

const Case kCases[] = {
    {"nothing", "", "ranges", "null", "objno 0 0\n"},
    {"an empty pool", "", "pool", "null", "objno 0 0\n"},
    {"one end of the ranges of the columns", "values 5 1 nan inf -inf nan nan", "ranges",
     R"({"variables": {"name": ["x", "a \"b\"", "z", "u", "v", "s"], "cost_low": [1, null, 1e100, -1e100, null, null],
         "cost_high": null, "lower_low": null, "lower_high": null, "upper_low": null, "upper_high": null},
         "rows": {"name": ["c1", "q", "n", "w", "_scon[5]"], "side_low": null, "side_high": null}})",
     "objno 0 0\nsuffix 4 3 10 0 0\nsensobjlo\n0 1\n2 Infinity\n3 -Infinity\n"},
    {"all ranges", "values 6 6;values 7 7;values 8 8;values 9 9;values 10 10;values 11 11;values 12 12", "ranges",
     R"({"variables": {"name": ["x", "a \"b\"", "z", "u", "v", "s"], "cost_low": null,
         "cost_high": [6, null, null, null, null, null], "lower_low": [7, null, null, null, null, null],
         "lower_high": [8, null, null, null, null, null], "upper_low": [9, null, null, null, null, null],
         "upper_high": [10, null, null, null, null, null]},
         "rows": {"name": ["c1", "q", "n", "w", "_scon[5]"], "side_low": [11, null, null, null, null],
                  "side_high": [12, null, null, null, null]}})",
     "suffix 4 1 9 0 0\nsenslblo\n0 7\nsuffix 4 1 9 0 0\nsenslbhi\n0 8\nsuffix 4 1 9 0 0\nsensublo\n0 9\n"
     "suffix 4 1 9 0 0\nsensubhi\n0 10\nsuffix 4 1 10 0 0\nsensobjhi\n0 6\n"
     "suffix 5 1 10 0 0\nsensrhslo\n0 11\nsuffix 5 1 10 0 0\nsensrhshi\n0 12\n"},
    {"a pool", "pool 8 1 2 3 4 5 6;pool 7.5 0", "pool",
     R"([{"objective": 8, "value": [1, 2, 3, 4, 5, 6]},
         {"objective": 7.5, "value": [0, null, null, null, null, null]}])",
     "suffix 3 1 5 0 0\nnsol\n0 2\nsuffix 3 1 6 0 0\nnpool\n0 2\n"},
    {"values of the objectives", "objectives 8 nan", "objectives",
     R"([{"name": "profit", "value": 8}, {"name": "_sobj[2]", "value": null}])", "objno 0 0\n"},
    {"a conflict without members", "minimal 1", "iis",
     R"({"minimal": true, "variables": {"name": [], "lower": [], "upper": []}, "rows": [], "quadratic": [], "sos": [],
         "general": []})",
     "objno 0 0\n"},
    {"a conflict of every kind", "minimal 1;marks 0 1 3 0 2 4 3;marks 1 1 4 2 3 3;marks 4 4;marks 5 4", "iis",
     R"({"minimal": true, "variables": {"name": ["x", "a \"b\"", "u", "v", "s"],
         "lower": [true, true, false, null, true], "upper": [false, true, true, null, true]},
         "rows": ["c1", "_scon[5]"], "quadratic": ["q"], "sos": ["sos"], "general": ["n", "w", "l"]})",
     "iis\n@0 1\n1 2\n3 3\n4 4\n5 4\nsuffix 1 6 4 0 0\niis\n0 1\n1 4\n2 3\n3 4\n4 2\n5 4\n"},
    {"a conflict that may be smaller", "marks 1 1 0 2 3", "iis",
     R"({"minimal": false, "variables": {"name": [], "lower": [], "upper": []}, "rows": ["c1"], "quadratic": [],
         "sos": [], "general": ["n", "w"]})",
     "iis\n@0 6\n2 7\n3 5\n"},
    {"a fixed model", "values 257 1 2 nan;values 259 3;basis 256 1 1 3;basis 257 2;values 260 0.5;fixed 0 1 8", "fixed",
     R"({"status": "optimal", "termination": "finished", "message": "optimal solution", "objective": 8,
         "variables": {"value": null, "reduced_cost": [1, 2, null, null, null, null],
                       "basis": ["lower", "lower", "basic", "superbasic", "superbasic", "superbasic"]},
         "rows": {"activity": null, "dual": [3, null, null, null, null], "slack": [0.5, null, null, null, null],
                  "basis": ["upper", "superbasic", "superbasic", "superbasic", "superbasic"]}})",
     "0\n5\n5\n6\n0\n3\n0\n0\n0\n0\nobjno 0 0\nsuffix 0 6 8 0 0\nsstatus\n0 3\n1 5\n2 1\n3 2\n4 2\n5 2\n"
     "suffix 1 5 8 0 0\nsstatus\n0 4\n1 2\n2 2\n3 2\n4 2\nsuffix 4 2 3 0 0\nrc\n0 1\n1 2\n"},
    {"a fixed model that was not closed", "values 257 1 2;basis 256 1", "fixed", "null", "objno 0 0\n"},
    {"own duals beside those of a fixed model", "values 3 1 2 3 4 5;values 259 9 9 9 9 9;fixed 0 1 8", "fixed",
     R"({"status": "optimal", "termination": "finished", "message": "optimal solution", "objective": 8,
         "variables": {"value": null, "reduced_cost": null, "basis": null},
         "rows": {"activity": null, "dual": [9, 9, 9, 9, 9], "slack": null, "basis": null}})",
     "6\n0\n1\n2\n3\n4\n5\nobjno 0 0\n"},
};

TEST(Results, StandInBothFiles) {
  Folder folder;
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.what);
    Model model;
    fillEveryKind(model);
    ASSERT_EQ(solveFake(model, {{"give", c.script}}), KAVO_OK) << kavo_last_error();
    EXPECT_EQ(jsonOf(model, folder)[c.field], json::parse(c.value));
    std::string expected = c.sol;
    if (const auto at = expected.find('@'); at != std::string::npos) expected.replace(at, 1, kConflictTable);
    EXPECT_THAT(solOf(model, folder), testing::EndsWith(expected));
  }
}

using ResultsOfSmall = SmallModel;

TEST_F(ResultsOfSmall, ConditionNumbersAreOfObjectiveAndProblem) {
  solve({{"condition", "1e6"}, {"exact", "2.5"}});
  const json found = jsonOf(model, folder);
  EXPECT_EQ(found["kappa"], 1e6);
  EXPECT_EQ(found["kappa_exact"], 2.5);
  EXPECT_THAT(solOf(model, folder), HasSubstr("suffix 6 1 6 0 0\nkappa\n0 1000000\nsuffix 7 1 6 0 0\nkappa\n0 1000000\n"
                                              "suffix 6 1 12 0 0\nkappa_exact\n0 2.5\n"));
}

// x = 7, a "b" = 2, u = 0.5, v = 1, s = 1 and activities 9, 8, nan, 6, 6.0000000001.
constexpr const char* kRelaxedPoint = "values 0 7 2 0 0.5 1 1;values 2 9 8 nan 6 6.0000000001";

TEST(Results, RelaxationTellsWhatItGaveUp) {
  struct Stop {
    int stop, code;
    const char* message;
  };
  Folder folder;
  for (const Stop& s : {Stop{1, 100, "feasible relaxation"},
                        {2, 100, "feasible relaxation"},
                        {5, 402, "stopped early, feasible relaxation"}}) {
    Model model;
    fillEveryKind(model);
    const Settings settings = {{"status", "6"},
                               {"stop", std::to_string(s.stop)},
                               {"relaxation", "4.5"},
                               {"objective", "14"},
                               {"give", kRelaxedPoint}};
    ASSERT_EQ(solveFake(model, settings), KAVO_OK);
    const kavo_outcome outcome = outcomeOf(model);
    EXPECT_EQ(outcome.relaxation, 4.5);
    EXPECT_EQ(outcome.sol_code, s.code);
    EXPECT_STREQ(outcome.message, s.message);
    EXPECT_EQ(jsonOf(model, folder)["relaxation"],
              json::parse(R"({"value": 4.5, "objective": 14, "rows": [{"name": "c1", "violation": 5},
                              {"name": "n", "violation": 1e100}, {"name": "w", "violation": 1}],
                              "bounds": [{"name": "x", "violation": 4}, {"name": "s", "violation": 1}]})"));
  }
  Model model;
  ASSERT_EQ(solveFake(model, {{"status", "6"}, {"stop", "5"}, {"relaxation", "0"}}), KAVO_OK);
  EXPECT_EQ(jsonOf(model, folder)["relaxation"],
            json::parse(R"({"value": 0, "objective": null, "rows": null, "bounds": null})"))
      << "no point";
}

TEST_F(ResultsOfSmall, PointsOfThePoolHaveFilesOfTheirOwn) {
  solve({{"objective", "8"}, {"give", "values 0 0 4;pool 8 0 4;pool 8.000000001 1 3;pool 7.5 nan 0"}});
  const char* ends[] = {
      "alternative solution 1 of 3: optimal solution; objective 8\n\nOptions\n3\n1\n1\n0\n2\n0\n2\n2\n"
      "0\n4\nobjno 0 0\n",
      "alternative solution 2 of 3: optimal solution; objective 8.000000001\n\nOptions\n3\n1\n1\n0\n"
      "2\n0\n2\n2\n1\n3\nobjno 0 0\n",
      "alternative solution 3 of 3: feasible solution; objective 7.5\n\nOptions\n3\n1\n1\n0\n2\n0\n2\n"
      "2\n0\n0\nobjno 0 100\n"};
  for (std::size_t i = 0; i < std::size(ends); ++i) {
    ASSERT_EQ(kavo_write_pool_sol(model, i, (folder / "p.sol").c_str(), "grblink"), KAVO_OK) << kavo_last_error();
    EXPECT_EQ(contentOf(folder / "p.sol"), std::string("grblink\n") + ends[i]);
  }
  ASSERT_EQ(kavo_write_pool_point(model, 1, (folder / "p.sol").c_str()), KAVO_OK) << kavo_last_error();
  EXPECT_EQ(contentOf(folder / "p.sol"), "# Objective value = 8.000000001\nx 1\n_svar[2] 3\n");
  EXPECT_EQ(kavo_write_pool_sol(model, 3, (folder / "q.sol").c_str(), ""), KAVO_NO_RESULT);
  EXPECT_STREQ(kavo_last_error(), "there is no point 3 in the pool: it has 3");
  EXPECT_EQ(kavo_write_pool_point(model, 3, (folder / "q.sol").c_str()), KAVO_NO_RESULT);
  EXPECT_EQ(folder.files(), 1);
}

TEST_F(ResultsOfSmall, AreLentThroughTheCInterface) {
  const double* values = nullptr;
  const unsigned char* marks = nullptr;
  std::size_t count = 9;
  double objective = 0;
  int minimal = 7;
  kavo_outcome fixed;
  EXPECT_EQ(kavo_pool_size(model, &count), KAVO_NO_RESULT) << "before a solve";
  solve();
  EXPECT_EQ(kavo_pool_size(model, &count), KAVO_OK);
  EXPECT_EQ(count, 0u);
  for (const int quantity : {-1, 13, 255, 269}) {
    EXPECT_EQ(kavo_result(model, quantity, &values, &count), KAVO_INVALID) << quantity;
  }
  const std::pair<int, const char*> missing[] = {
      {KAVO_UPPER_LOW, "the last solve gave no ranges of upper bounds"},
      {KAVO_SIDE_HIGH, "the last solve gave no ranges of sides"},
      {KAVO_DUAL + KAVO_OF_FIXED, "the last solve gave no results of a fixed model"}};
  for (const auto& [quantity, message] : missing) {
    EXPECT_EQ(kavo_result(model, quantity, &values, &count), KAVO_NO_RESULT);
    EXPECT_STREQ(kavo_last_error(), message);
  }
  EXPECT_EQ(kavo_get_fixed_outcome(model, &fixed), KAVO_NO_RESULT);
  EXPECT_EQ(kavo_objective_values(model, &values, &count), KAVO_NO_RESULT);
  EXPECT_EQ(kavo_conflict(model, KAVO_ROW, &marks, &count), KAVO_NO_RESULT);
  EXPECT_EQ(kavo_conflict_is_minimal(model, &minimal), KAVO_NO_RESULT);

  solve({{"give", "marks 1 3;pool 5 1 2;objectives 5;values 259 4 5;fixed 2 5 1"}});
  ASSERT_EQ(kavo_conflict(model, KAVO_COLUMN, &marks, &count), KAVO_OK);
  EXPECT_THAT(std::vector(marks, marks + count), ElementsAre(0, 0)) << "kinds that were not given have no marks";
  ASSERT_EQ(kavo_conflict(model, KAVO_SET, &marks, &count), KAVO_OK);
  EXPECT_THAT(std::vector(marks, marks + count), IsEmpty());
  EXPECT_EQ(kavo_conflict(model, KAVO_OBJECTIVE, &marks, &count), KAVO_INVALID);
  ASSERT_EQ(kavo_conflict_is_minimal(model, &minimal), KAVO_OK);
  EXPECT_EQ(minimal, 0);
  ASSERT_EQ(kavo_pool_point(model, 0, &objective, &values, &count), KAVO_OK);
  EXPECT_EQ(objective, 5);
  EXPECT_THAT(std::vector(values, values + count), ElementsAre(1, 2));
  ASSERT_EQ(kavo_result(model, KAVO_DUAL + KAVO_OF_FIXED, &values, &count), KAVO_OK);
  EXPECT_THAT(std::vector(values, values + count), ElementsAre(4, 5));
  ASSERT_EQ(kavo_get_fixed_outcome(model, &fixed), KAVO_OK);
  EXPECT_STREQ(fixed.status_text, "infeasible");
  EXPECT_STREQ(fixed.termination, "time_limit");
  EXPECT_EQ(fixed.seconds, 0.5);
}

}  // namespace
}  // namespace kavo_test
