// New numbers in a model that stands, what the link hears of them, and what a model is counted to consist of.

#include <gmock/gmock.h>

#include <cmath>
#include <functional>
#include <map>
#include <random>

#include "kavo/link.h"
#include "tests/kavo/fixture.h"
#include "tests/kavo/picture.h"

namespace kavo_test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(Change, NumbersArriveInTheModel) {
  Model model;
  fillSmall(model);
  const std::size_t start[] = {0, 0, 1};
  const int column = 1;
  const double three = 3;
  ASSERT_EQ(kavo_add_rows(model, 2, nullptr, nullptr, start, &column, &three, nullptr), KAVO_OK);

  // A new term in an empty row, one in a row that has another, the same place twice, a 0 that is there and one that
  // is not.
  const int rows[] = {2, 3, 0, 1, 0, 2}, columns[] = {0, 0, 1, 0, 1, 1};
  const double values[] = {7, 8, 5, 0, 9, 0};
  ASSERT_EQ(kavo_change_coefficients(model, 6, rows, columns, values), KAVO_OK) << kavo_last_error();
  const int first[] = {0, 0}, second[] = {1};
  const double lower[] = {-5, 2}, upper[] = {INFINITY, 4}, above[] = {1};
  ASSERT_EQ(kavo_change_sides(model, 2, first, lower, upper), KAVO_OK);
  ASSERT_EQ(kavo_change_sides(model, 1, second, nullptr, lower), KAVO_OK) << "the sides may exclude each other";
  ASSERT_EQ(kavo_change_bounds(model, 1, second, above, nullptr), KAVO_OK);
  ASSERT_EQ(kavo_change_objective(model, 0, &three, 1, first, above), KAVO_OK);
  EXPECT_EQ(picture(model),
            "x:0:3:0\n:1:1e+20:2\n"
            "c1:2:4 1*0 9*1\n:6:-5 0*0 3*1\n:-1e+20:1e+20 7*0\n:-1e+20:1e+20 3*1 8*0\n"
            "profit:1:3 1*0 2*1\n");
}

// Against a matrix as a map, with many changes at once.
TEST(Change, ManyNewCoefficients) {
  const int columns = 20, rows = 15;
  std::mt19937 random(7);
  const auto any = [&random](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
  Model model;
  ASSERT_EQ(kavo_add_columns(model, columns, nullptr, nullptr, nullptr, nullptr), KAVO_OK);
  const std::vector<std::size_t> start(rows + 1, 0);
  ASSERT_EQ(kavo_add_rows(model, rows, nullptr, nullptr, start.data(), nullptr, nullptr, nullptr), KAVO_OK);
  std::map<std::pair<int, int>, double> expected, found;
  for (int call = 0; call < 30; ++call) {
    std::vector<int> row, column;
    std::vector<double> value;
    for (int k = any(12); k > 0; --k) {
      row.push_back(any(rows)), column.push_back(any(columns)), value.push_back(any(9) + 1);
      expected[{row.back(), column.back()}] = value.back();
    }
    ASSERT_EQ(kavo_change_coefficients(model, row.size(), row.data(), column.data(), value.data()), KAVO_OK);
  }
  kavo_rows all;
  ASSERT_EQ(kavo_link_rows(model, &all), KAVO_OK);
  for (int i = 0; i < rows; ++i) {
    for (std::size_t k = all.start[i]; k < all.start[i + 1]; ++k) {
      EXPECT_TRUE(found.emplace(std::pair(i, all.column[k]), all.value[k]).second) << "a column stands twice in a row";
    }
  }
  EXPECT_EQ(found, expected);
}

TEST(Change, BadInputIsRefusedAndChangesNothing) {
  const double nan = NAN, inf = INFINITY, one[] = {1, 1}, nans[] = {1, nan}, bigs[] = {1, -1e20}, infs[] = {1, inf};
  const int both[] = {0, 1}, beyond[] = {0, 2}, negative[] = {0, -1};
  const std::vector<BadCall> calls = {
      {"there is no row 2: the model has 2", [&](trpRec* m) { return kavo_change_sides(m, 2, beyond, one, one); }},
      {"row 1: lower bound nan", [&](trpRec* m) { return kavo_change_sides(m, 2, both, nans, one); }},
      {"row 1: upper bound -1e+20", [&](trpRec* m) { return kavo_change_sides(m, 2, both, nullptr, bigs); }},
      {"rows of the changes are null", [&](trpRec* m) { return kavo_change_sides(m, 1, nullptr, one, one); }},
      {"there is no column -1", [&](trpRec* m) { return kavo_change_bounds(m, 2, negative, one, one); }},
      {"column 1: lower bound inf", [&](trpRec* m) { return kavo_change_bounds(m, 2, both, infs, nullptr); }},
      {"there is no row -1", [&](trpRec* m) { return kavo_change_coefficients(m, 2, negative, both, one); }},
      {"row 1: column 2 of term 1", [&](trpRec* m) { return kavo_change_coefficients(m, 2, both, beyond, one); }},
      {"row 1: coefficient nan of column 1",
       [&](trpRec* m) { return kavo_change_coefficients(m, 2, both, both, nans); }},
      {"row 1: coefficient inf", [&](trpRec* m) { return kavo_change_coefficients(m, 2, both, both, infs); }},
      {"values of the changes", [&](trpRec* m) { return kavo_change_coefficients(m, 2, both, both, nullptr); }},
      {"no element 1", [&](trpRec* m) { return kavo_change_objective(m, 1, one, 0, nullptr, nullptr); }},
      {"the constant inf", [&](trpRec* m) { return kavo_change_objective(m, 0, &inf, 0, nullptr, nullptr); }},
      {"objective 0 (\"profit\"): column 2",
       [&](trpRec* m) { return kavo_change_objective(m, 0, one, 2, beyond, one); }},
      {"coefficient -1e+20", [&](trpRec* m) { return kavo_change_objective(m, 0, one, 2, both, bigs); }},
      {"basis ratio nan", [&](trpRec* m) { return kavo_set_basis_ratio(m, nan); }},
      {"basis ratio 1.5", [&](trpRec* m) { return kavo_set_basis_ratio(m, 1.5); }},
      {"row 0 (\"c1\"): there is no basis status 5",
       [&](trpRec* m) {
         const int statuses[] = {5, 1};
         return kavo_set_basis(m, both, statuses);
       }},
      {"start value of column 1 is infinite", [&](trpRec* m) { return kavo_add_mip_start(m, infs); }},
      {"the values is null", [&](trpRec* m) { return kavo_add_mip_start(m, nullptr); }},
  };
  expectRefused(fillSmall, calls);
}

TEST(Change, SwitchOfARowStaysASwitch) {
  Model model;
  const unsigned char types[] = {KAVO_INTEGER, KAVO_BINARY};
  const double one = 1, two = 2, ones[] = {1, 1};
  const std::size_t start[] = {0, 0, 0};
  const int both[] = {0, 1};
  ASSERT_EQ(kavo_add_columns(model, 2, nullptr, ones, types, nullptr), KAVO_OK);
  ASSERT_EQ(kavo_add_rows(model, 2, nullptr, ones, start, nullptr, nullptr, nullptr), KAVO_OK);
  ASSERT_EQ(kavo_set_indicators(model, 2, both, both, nullptr), KAVO_OK);
  EXPECT_EQ(kavo_change_bounds(model, 1, both, &one, nullptr), KAVO_OK);
  EXPECT_EQ(kavo_change_bounds(model, 1, both + 1, nullptr, &two), KAVO_OK) << "a binary column is one with any bounds";
  EXPECT_EQ(kavo_change_bounds(model, 1, both, nullptr, &two), KAVO_INVALID);
  EXPECT_STREQ(kavo_last_error(), "column 0: bounds 1 and 2 are not within 0 and 1, but it switches a row");
}

TEST(Statistics, CountEachThingOnce) {
  Model model;
  const unsigned char types[] = {0, 1, 2, 3, 4, 0};
  const double lower[] = {-2e-3, 0, -1e30, 0, 0, 0}, upper[] = {7, 1, 40, 5e5, INFINITY, 1};
  ASSERT_EQ(kavo_add_columns(model, 6, lower, upper, types, nullptr), KAVO_OK);
  // Rows: equation, two inequalities, range, free, quadratic, quadratic and nonlinear, all of these and switched.
  const double from[] = {3, 0, -1e20, 2, -1e20, 0, 0, 0}, to[] = {3, 1e25, 0.5, 900, 1e20, 8, 8, 8};
  const std::size_t start[] = {0, 2, 3, 4, 5, 5, 5, 5, 5};
  const int columns[] = {0, 1, 2, 3, 4};
  const double values[] = {-1e-3, 0, 1e6, 5, 2};
  ASSERT_EQ(kavo_add_rows(model, 8, from, to, start, columns, values, nullptr), KAVO_OK) << kavo_last_error();
  const std::size_t terms[] = {0, 1, 2, 3}, node[] = {0, 2};
  const int quadratic[] = {5, 6, 7}, squares[] = {0, 1, 2}, op[] = {KAVO_OP_VARIABLE, KAVO_OP_SIN}, zeros[] = {0, 0};
  const double ones[] = {1, 1}, costs[] = {11, -13}, products[] = {1, 1e-4, 1};
  ASSERT_EQ(kavo_add_quadratic_terms(model, KAVO_ROW, 3, quadratic, terms, squares, squares, products), KAVO_OK);
  ASSERT_EQ(kavo_add_expressions(model, 1, node, op, zeros, ones, nullptr), KAVO_OK);
  ASSERT_EQ(kavo_set_expressions(model, KAVO_ROW, 2, quadratic + 1, zeros), KAVO_OK);
  ASSERT_EQ(kavo_set_indicators(model, 1, quadratic + 2, squares + 1, nullptr), KAVO_OK);
  ASSERT_EQ(kavo_add_objective(model, KAVO_MINIMIZE, 99, 1, columns, costs, nullptr), KAVO_OK);
  ASSERT_EQ(kavo_add_objective(model, KAVO_MINIMIZE, 0, 2, columns, costs, nullptr), KAVO_OK);
  const unsigned char sets[] = {1, 2, 2};
  const std::size_t members[] = {0, 2, 4, 6};
  const int member[] = {0, 1, 0, 1, 2, 3}, expression = 0;
  ASSERT_EQ(kavo_add_sets(model, 3, sets, members, member, nullptr, nullptr), KAVO_OK);
  ASSERT_EQ(kavo_add_logical(model, 1, &expression, nullptr), KAVO_OK);

  kavo_statistics s;
  const auto range = [](kavo_range r) { return std::pair(r.smallest, r.largest); };
  ASSERT_EQ(kavo_get_statistics(model, &s), KAVO_OK);
  EXPECT_THAT(s.columns, ElementsAre(2, 1, 1, 1, 1));
  EXPECT_THAT((std::vector{s.rows, s.equalities, s.inequalities, s.ranges, s.free_rows}), ElementsAre(8, 1, 2, 1, 1));
  EXPECT_THAT((std::vector{s.quadratic_rows, s.nonlinear_rows, s.switched_rows}), ElementsAre(1, 1, 1));
  EXPECT_THAT((std::vector{s.logical, s.sets1, s.sets2, s.objectives}), ElementsAre(1, 1, 2, 2));
  EXPECT_THAT((std::vector{s.nonzeros, s.quadratic_terms, s.nodes}), ElementsAre(4, 3, 2));
  EXPECT_EQ(range(s.coefficients), std::pair(1e-4, 1e6));
  EXPECT_EQ(range(s.objective), std::pair(11.0, 11.0));
  EXPECT_EQ(range(s.bounds), std::pair(2e-3, 5e5));
  EXPECT_EQ(range(s.sides), std::pair(0.5, 900.0));
  for (const auto& [number, expected] : {std::pair(2, std::pair(11.0, 13.0)), {0, {0, 0}}, {3, {0, 0}}}) {
    ASSERT_EQ(kavo_set_objective_number(model, number), KAVO_OK);
    ASSERT_EQ(kavo_get_statistics(model, &s), KAVO_OK);
    EXPECT_EQ(range(s.objective), expected) << number;
  }
}

// What is done between two solves, and what the link hears of it in the second.
struct Told {
  const char* line;
  std::function<void(trpRec*)> change;
  bool keepsResults = false;
};

void expectTold(const Told& c) {
  Model model;
  fillSmall(model);
  const int row = 1;
  const double lower = 2;
  ASSERT_EQ(kavo_add_objective(model, KAVO_MINIMIZE, 0, 0, nullptr, nullptr, nullptr), KAVO_OK);
  ASSERT_EQ(kavo_change_sides(model, 1, &row, &lower, nullptr), KAVO_OK);
  ASSERT_EQ(kavo_open_link(model, FAKE_LINK), KAVO_OK);
  EXPECT_EQ(logOfSolve(model, {{"tell", "1"}}), "call: structure\nstarts:\n") << "the first solve";
  kavo_outcome outcome;
  EXPECT_EQ(kavo_get_outcome(model, &outcome), KAVO_OK);
  c.change(model);
  EXPECT_EQ(kavo_get_outcome(model, &outcome), c.keepsResults ? KAVO_OK : KAVO_NO_RESULT) << c.line;
  EXPECT_THAT(logOfSolve(model, {{"tell", "1"}}), HasSubstr(std::string(c.line) + "\n"));
  EXPECT_THAT(logOfSolve(model, {{"tell", "1"}}), HasSubstr("call:\n")) << "forgotten after " << c.line;
}

TEST(Change, LinkHearsWhatHasChangedSinceTheLastSolve) {
  const int both[] = {1, 0}, zero = 0, one = 1;
  const double values[] = {4, 5}, six = 6;
  const std::size_t none[] = {0, 0};
  const auto sides = [&](trpRec* m) { kavo_change_sides(m, 2, both, values, nullptr); };
  const auto suffix = [&](trpRec* m, const char* name) { kavo_set_suffix(m, KAVO_ROW, name, 1, &zero, &six); };
  const Told cases[] = {
      {"call:", [](trpRec*) {}, true},
      {"call:",
       [&](trpRec* m) {
         kavo_set_start(m, values, values);
         kavo_set_basis(m, both, nullptr);
         kavo_add_mip_start(m, values);
         suffix(m, "feaspref");
         kavo_set_option(m, "objective", "1", nullptr, 0);
       },
       true},
      {"modified: row0 row1", [&](trpRec* m) { sides(m), sides(m); }},
      {"modified: column1", [&](trpRec* m) { kavo_change_bounds(m, 1, &one, nullptr, values); }},
      {"modified: a0,0=6 a0,1=4 a1,0=5",
       [&](trpRec* m) {
         const int rising[] = {0, 1};
         kavo_change_coefficients(m, 2, both, rising, values);  // (1,0) = 4, (0,1) = 5
         kavo_change_coefficients(m, 1, &zero, &zero, &six);
         kavo_change_coefficients(m, 2, rising, both, values);  // (0,1) = 4, (1,0) = 5
       }},
      {"modified: c0=5 c1=4 constant",
       [&](trpRec* m) {
         kavo_change_objective(m, 0, &six, 1, &zero, &six);
         kavo_change_objective(m, 0, nullptr, 2, both, values);
       }},
      {"modified: others", [&](trpRec* m) { kavo_change_objective(m, 1, &six, 1, &zero, &six); }},
      {"modified: structure",
       [&](trpRec* m) {
         sides(m);
         kavo_add_rows(m, 1, nullptr, nullptr, none, nullptr, nullptr, nullptr);
         sides(m);
       }},
      {"modified: structure", [&](trpRec* m) { kavo_set_objective_number(m, 2); }},
      {"modified: structure", [&](trpRec* m) { suffix(m, "lazy"); }, true},
      {"modified: structure",  // after a failure nobody knows what the link has
       [&](trpRec* m) {
         sides(m);
         EXPECT_EQ(logOfSolve(m, {{"tell", "1"}, {"fail", "no"}}, KAVO_LINK), "modified: row0 row1\nstarts:\n");
       }},
      {"call: structure",  // a new link has nothing
       [&](trpRec* m) {
         kavo_close_link(m);
         kavo_open_link(m, FAKE_LINK);
       },
       true},
  };
  for (const Told& c : cases) expectTold(c);
}

}  // namespace
}  // namespace kavo_test
