// The road to a link and back, with the fake link in the solver's place.

#include <gmock/gmock.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <thread>

#include "fixture.h"
#include "kavo/link.h"

namespace kavo_test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

using SolveOfSmall = SmallModel;

std::vector<double> resultOf(const trpRec* model, int quantity) {
  const double* values = nullptr;
  std::size_t count = 0;
  EXPECT_EQ(kavo_result(model, quantity, &values, &count), KAVO_OK) << kavo_last_error();
  return {values, values + count};
}

TEST_F(SolveOfSmall, ResultsComeBackAndStayWhenTheLinkIsClosed) {
  solve({{"point", "1"}, {"give", kDualsAndBasis}, {"objective", "8.5"}, {"violation", "0.25"}});
  EXPECT_THAT(resultOf(model, KAVO_PRIMAL), ElementsAre(0, 0));
  EXPECT_THAT(resultOf(model, KAVO_DUAL), ElementsAre(1.5, 2.5));
  EXPECT_THAT(resultOf(model, KAVO_REDUCED_COST), ElementsAre(-0.5, 0.5));
  const int* basis = nullptr;
  std::size_t count = 0;
  ASSERT_EQ(kavo_result_basis(model, KAVO_ROW, &basis, &count), KAVO_OK);
  EXPECT_THAT(std::vector(basis, basis + count), ElementsAre(KAVO_BASIS_LOWER, KAVO_BASIS_UPPER));
  double value = 0;
  long long element = -1;
  ASSERT_EQ(kavo_violation(model, KAVO_CHECK_ROW, &value, &element), KAVO_OK);
  EXPECT_EQ(value, 0.25);
  EXPECT_EQ(element, 0);
  const kavo_outcome outcome = outcomeOf(model);
  EXPECT_EQ(outcome.objective, 8.5);
  EXPECT_TRUE(std::isnan(outcome.bound));
  EXPECT_GE(outcome.seconds, 0);

  const double* none = &value;
  EXPECT_EQ(kavo_result(model, KAVO_SLACK, &none, &count), KAVO_NO_RESULT);
  EXPECT_EQ(none, nullptr);
  EXPECT_EQ(count, 0u);
  EXPECT_EQ(kavo_violation(model, KAVO_CHECK_BOUND, &value, &element), KAVO_NO_RESULT);
}

TEST_F(SolveOfSmall, ResultsGoWithAChangeOfTheModelAndWithAFailure) {
  kavo_outcome outcome;
  EXPECT_EQ(kavo_get_outcome(model, &outcome), KAVO_NO_RESULT);
  solve();
  const int beyond = 9;
  ASSERT_EQ(kavo_change_sides(model, 1, &beyond, nullptr, nullptr), KAVO_INVALID);
  EXPECT_EQ(kavo_get_outcome(model, &outcome), KAVO_OK) << "a change that is refused is none";
  ASSERT_EQ(kavo_add_columns(model, 1, nullptr, nullptr, nullptr, nullptr), KAVO_OK);
  EXPECT_EQ(kavo_get_outcome(model, &outcome), KAVO_NO_RESULT);
  solve();
  EXPECT_EQ(solveFake(model, {{"fail", "the machine is on fire"}}), KAVO_LINK);
  EXPECT_STREQ(kavo_last_error(), "the machine is on fire");
  EXPECT_EQ(kavo_get_outcome(model, &outcome), KAVO_NO_RESULT);
}

TEST_F(SolveOfSmall, ALostFileLeavesTheResults) {
  EXPECT_EQ(solveFake(model, {{"point", "1"}, {"lose", "F is gone"}}), KAVO_FILE);
  EXPECT_STREQ(kavo_last_error(), "F is gone");
  EXPECT_THAT(notesOf(model), ElementsAre("F is gone"));
  EXPECT_THAT(resultOf(model, KAVO_PRIMAL), ElementsAre(0, 0));
  solve({{"lose", ""}});
}

TEST(Solve, LinkThatCannotBeUsedIsNamed) {
  Model model;
  EXPECT_EQ(kavo_open_link(model, "/nosuch/link.so"), KAVO_LINK);
  EXPECT_THAT(kavo_last_error(), HasSubstr("/nosuch/link.so"));
  EXPECT_EQ(kavo_open_link(model, "libz.so.1"), KAVO_LINK);
  EXPECT_THAT(kavo_last_error(), HasSubstr("libz.so.1 is not a link: it does not export grbCreate"));
  for (const std::size_t length : {20u, 5000u}) {  // the link's buffer is shorter, and then not ended
    setenv("FAKE_LINK_CREATE", std::string(length, 'x').c_str(), 1);
    EXPECT_EQ(kavo_open_link(model, FAKE_LINK), KAVO_LINK);
    EXPECT_EQ(kavo_last_error(), std::string(std::min<std::size_t>(length, 4096), 'x'));
  }
  unsetenv("FAKE_LINK_CREATE");
  EXPECT_EQ(kavo_open_link(model, FAKE_LINK), KAVO_OK);
  EXPECT_EQ(kavo_open_link(model, FAKE_LINK), KAVO_INVALID);
}

TEST_F(SolveOfSmall, LinkWithoutResultsOrReasonIsAFailure) {
  EXPECT_EQ(solveFake(model, {{"unfinished", "1"}}), KAVO_LINK);
  EXPECT_THAT(kavo_last_error(), HasSubstr("without results"));
}

TEST(Solve, ObjectiveThatDoesNotExistIsRefused) {
  Model model;
  ASSERT_EQ(kavo_set_objective_number(model, 1), KAVO_OK);
  EXPECT_EQ(solveFake(model, {}), KAVO_OK);  // the default of a model without objective
  int number = -1;
  ASSERT_EQ(kavo_link_objective_number(model, &number), KAVO_OK);
  EXPECT_EQ(number, 0);
  ASSERT_EQ(kavo_set_objective_number(model, 2), KAVO_OK);
  EXPECT_EQ(solveFake(model, {}), KAVO_INVALID);
  EXPECT_THAT(kavo_last_error(), HasSubstr("objective 2"));
}

TEST(Solve, ComplementarityIsRefusedByName) {
  const Folder folder;
  writeTo(folder / "m.nl",
          "g3 1 1 0\n1 2 0\n0 0\n0 0\n0 0 0\n0 0 0 1\n0 0 0 0 0\n0 0\n0 0\n0 0 0 0 0\nr\n3\n5 1 1\nb\n2 0\n");
  writeTo(folder / "m.row", "r1\nr2\n");
  Model model;
  ASSERT_EQ(kavo_read(model, (folder / "m.nl").c_str()), KAVO_OK) << kavo_last_error();
  EXPECT_EQ(solveFake(model, {}), KAVO_NOT_SUPPORTED);
  EXPECT_STREQ(kavo_last_error(), "row r2 is a complementarity condition, which the solver does not take");
}

TEST(Solve, OddThingsInTheModelAreNoted) {
  Model model;
  const char* names[] = {"a", "b", "a", "a", ""};
  const double lower[] = {0, 0, 2, 0, 0}, upper[] = {1, 1, 1, 1, 1};
  ASSERT_EQ(kavo_add_columns(model, 5, lower, upper, nullptr, names), KAVO_OK);
  const int first = 0;
  const double one = 1, priorities[] = {1, INFINITY, -INFINITY};
  const int three[] = {0, 1, 2};
  ASSERT_EQ(kavo_set_suffix(model, KAVO_COLUMN, "priority", 3, three, priorities), KAVO_OK);
  for (const char* suffix : {"hintpri", "direction", "mine"}) {
    ASSERT_EQ(kavo_set_suffix(model, KAVO_COLUMN, suffix, 1, &first, &one), KAVO_OK);
  }
  ASSERT_EQ(kavo_set_suffix(model, KAVO_COLUMN, "funcpieces", 0, nullptr, nullptr), KAVO_OK);
  ASSERT_EQ(kavo_set_suffix(model, KAVO_MODEL, "direction", 1, &first, &one), KAVO_OK);
  ASSERT_EQ(solveFake(model, {{"note", "from the link"}}), KAVO_OK);
  EXPECT_THAT(
      notesOf(model),
      ElementsAre("2 column names are given twice, the first is \"a\"",
                  "column a has lower bound 2 above upper bound 1", "the suffixes direction, hintpri are ignored",
                  "2 infinite priorities have no effect, the first is that of column b", "from the link"));
  ASSERT_EQ(solveFake(model, {{"fail", "no"}}), KAVO_LINK);
  EXPECT_EQ(notesOf(model).size(), 5u) << "notes tell about a failed solve too";
}

TEST_F(SolveOfSmall, ModelCannotBeChangedFromWithinItsSolve) {
  std::vector<int> statuses;
  std::pair context{static_cast<trpRec*>(model), &statuses};
  const auto log = [](const char*, std::size_t, void* data) {
    const auto& [handle, told] = *static_cast<std::pair<trpRec*, std::vector<int>*>*>(data);
    trpRec* copy = handle;
    *told = {kavo_add_columns(handle, 1, nullptr, nullptr, nullptr, nullptr), kavo_solve(handle), kavo_free(&copy)};
  };
  ASSERT_EQ(kavo_set_log(model, log, &context), KAVO_OK);
  solve({{"log", "now"}});
  EXPECT_THAT(statuses, ElementsAre(KAVO_INVALID, KAVO_INVALID, KAVO_INVALID));
}

class Interrupt : public SmallModel, public testing::WithParamInterface<int> {};

TEST_P(Interrupt, StopsASolverThatForgetsEarlyRequests) {
  ASSERT_EQ(kavo_interrupt(model, GetParam()), KAVO_OK) << "without a solve it does nothing";
  std::thread host([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    EXPECT_EQ(kavo_interrupt(model, GetParam()), KAVO_OK);
    EXPECT_EQ(kavo_interrupt(model, KAVO_STOP_HOST), KAVO_OK) << "the first request tells who asked";
  });
  solve({{"wait", "1"}, {"deaf", "3"}, {"point", "1"}});
  host.join();
  const kavo_outcome outcome = outcomeOf(model);
  EXPECT_STREQ(outcome.termination, GetParam() == KAVO_STOP_SIGNAL ? "interrupted_by_signal" : "interrupted_by_host");
  EXPECT_EQ(outcome.sol_code, 401);
  EXPECT_LT(outcome.seconds, 10);
  solve({{"wait", "0"}});
  EXPECT_EQ(kavo_link_stop_requested(model), 0) << "a request belongs to one solve";
}

INSTANTIATE_TEST_SUITE_P(Sources, Interrupt, testing::Values(KAVO_STOP_HOST, KAVO_STOP_SIGNAL));

// What every pair of status and stop reason must keep, whatever its words: clients of the AMPL protocol sort results by
// the hundreds of the code, and by words of the message for codes they do not know.
TEST(Outcome, CodesAndWordsAgreeForEveryPair) {
  for (int status = KAVO_OPTIMAL; status <= KAVO_UNKNOWN; ++status) {
    for (int stop = KAVO_STOP_NOT_RUN; stop <= KAVO_STOP_RULE; ++stop) {
      for (const bool point : {false, true}) {
        Model model;
        ASSERT_EQ(solveFake(model, {{"status", std::to_string(status)},
                                    {"stop", std::to_string(stop)},
                                    {"point", point ? "1" : "0"}}),
                  KAVO_OK);
        const kavo_outcome outcome = outcomeOf(model);
        const int code = outcome.sol_code, hundreds = code / 100;
        const std::string message = outcome.message,
                          where = std::string(outcome.status_text) + ", " + outcome.termination;
        const auto says = [&](const char* word) { return message.find(word) != std::string::npos; };
        if (status == KAVO_OPTIMAL || status == KAVO_LOCALLY_OPTIMAL) {
          EXPECT_TRUE(hundreds == 0 && says("optimal")) << where;
        } else if (status == KAVO_INFEASIBLE || status == KAVO_LOCALLY_INFEASIBLE) {
          EXPECT_TRUE(hundreds == 2 && says("infeasible") && !says("optimal")) << where;
        } else if (status == KAVO_UNBOUNDED) {
          EXPECT_EQ(code, point ? 300 : 350) << where;
          EXPECT_TRUE(says("unbounded") && !says("infeasible")) << where;
        } else if (status == KAVO_INFEASIBLE_OR_UNBOUNDED) {
          EXPECT_EQ(code, 450);
        } else if (stop == KAVO_STOP_NUMERIC) {
          EXPECT_EQ(code, 550);
        } else if (stop == KAVO_STOP_SUBOPTIMAL && point) {
          EXPECT_EQ(code, 100);
        } else if (stop > KAVO_STOP_SUBOPTIMAL) {
          EXPECT_EQ(hundreds, 4) << where;
          EXPECT_EQ(code % 100 < 50, point) << where;
          EXPECT_EQ(says(", feasible solution"), point) << where;
        } else {
          EXPECT_TRUE(hundreds == 5 || (hundreds == 1 && point)) << where;
        }
      }
    }
  }
}

}  // namespace
}  // namespace kavo_test
