// Filling a model: what is refused, and what a link sees of what was taken.

#include <gmock/gmock.h>

#include <cmath>

#include "kavo/link.h"
#include "tests/kavo/fixture.h"
#include "tests/kavo/picture.h"

extern "C" int countColumnsFromC(const trpRec* model);

namespace kavo_test {
namespace {

using testing::ElementsAre;

TEST(Build, LinkSeesWhatTheHostGave) {
  Model model;
  fillSmall(model);
  EXPECT_EQ(picture(model),
            "x:0:3:0\n:0:1e+20:2\n"
            "c1:1:4 1*0 1*1\n:6:6 1*0 3*1\n"
            "profit:1:0 3*0 2*1\n");
  EXPECT_EQ(countColumnsFromC(model), 2);
  std::size_t counts[4];
  ASSERT_EQ(kavo_counts(model, counts, counts + 1, counts + 2, counts + 3), KAVO_OK);
  EXPECT_THAT(counts, ElementsAre(2, 2, 4, 1));
  const char* name = nullptr;
  for (const auto& [kind, index, expected] : {std::tuple(KAVO_COLUMN, 0, "x"),
                                              {KAVO_COLUMN, 1, "_svar[2]"},
                                              {KAVO_ROW, 1, "_scon[2]"},
                                              {KAVO_OBJECTIVE, 0, "profit"}}) {
    ASSERT_EQ(kavo_name(model, kind, static_cast<std::size_t>(index), &name), KAVO_OK);
    EXPECT_STREQ(name, expected);
  }
}

TEST(Build, DefaultsSumsAndLateNames) {
  Model model;
  const char* late = "late";
  for (const char** name : {static_cast<const char**>(nullptr), &late, static_cast<const char**>(nullptr)}) {
    ASSERT_EQ(kavo_add_columns(model, 1, nullptr, nullptr, nullptr, name), KAVO_OK);
  }
  const std::size_t start[] = {0, 4, 6};
  const int columns[] = {2, 0, 2, 0, 1, 0};
  const double values[] = {1, 2, 4, 8, 16, 32};
  ASSERT_EQ(kavo_add_rows(model, 2, nullptr, nullptr, start, columns, values, nullptr), KAVO_OK);
  ASSERT_EQ(kavo_add_objective(model, KAVO_MINIMIZE, 7, 4, columns, values, nullptr), KAVO_OK);
  EXPECT_EQ(picture(model),
            ":0:1e+20:0\nlate:0:1e+20:0\n:0:1e+20:0\n"
            ":-1e+20:1e+20 10*0 5*2\n:-1e+20:1e+20 16*1 32*0\n:0:7 10*0 5*2\n");
}

TEST(Build, LaterSuffixReplacesEarlier) {
  Model model;
  fillSmall(model);
  const int both[] = {0, 1};
  const double first[] = {1, 2}, second[] = {3};
  ASSERT_EQ(kavo_set_suffix(model, KAVO_COLUMN, "priority", 2, both, first), KAVO_OK);
  ASSERT_EQ(kavo_set_suffix(model, KAVO_ROW, "priority", 2, both, first), KAVO_OK);
  ASSERT_EQ(kavo_set_suffix(model, KAVO_COLUMN, "priority", 1, both + 1, second), KAVO_OK);
  kavo_suffix suffix;
  ASSERT_EQ(kavo_link_suffix(model, KAVO_COLUMN, "priority", &suffix), KAVO_OK);
  ASSERT_EQ(suffix.count, 1u);
  EXPECT_EQ(suffix.index[0], 1);
  EXPECT_EQ(suffix.value[0], 3);
  ASSERT_EQ(kavo_link_suffix(model, KAVO_OBJECTIVE, "priority", &suffix), KAVO_OK);
  EXPECT_EQ(suffix.count, 0u);
}

TEST(Build, BadInputIsRefusedByNameAndChangesNothing) {
  const double nan = NAN, inf = INFINITY, big = 1e20, one[] = {1, 1}, nans[] = {1, nan}, infs[] = {1, inf},
               bigs[] = {1, -big};
  const std::size_t start[] = {0, 2}, late[] = {1, 2}, down[] = {0, 2, 1}, singles[] = {0, 1, 2};
  const int columns[] = {0, 1}, beyond[] = {0, 2}, negative[] = {0, -1};
  const char* names[] = {"a", "b"};
  const unsigned char types[] = {0, 9};
  using Call = std::function<int(trpRec*)>;
  const auto addColumns = [](const double* lower, const double* upper, const unsigned char* type, const char** name) {
    return Call([=](trpRec* m) { return kavo_add_columns(m, 2, lower, upper, type, name); });
  };
  const auto addRows = [&](std::size_t count, const std::size_t* first, const int* column, const double* value,
                           const char** name = nullptr, const double* lower = nullptr) {
    return Call([=](trpRec* m) { return kavo_add_rows(m, count, lower, nullptr, first, column, value, name); });
  };
  const std::vector<BadCall> calls = {
      {"the model is null", [&](trpRec*) { return kavo_add_columns(nullptr, 1, one, one, nullptr, nullptr); }},
      {"column 3 (\"b\"): lower bound nan", addColumns(nans, nullptr, nullptr, names)},
      {"column 3: lower bound inf", addColumns(infs, nullptr, nullptr, nullptr)},
      {"column 3: upper bound -1e+20", addColumns(nullptr, bigs, nullptr, nullptr)},
      {"column 3: there is no variable type 9", addColumns(nullptr, nullptr, types, nullptr)},
      {"2147483647",
       [&](trpRec* m) { return kavo_add_columns(m, std::size_t{1} << 31, nullptr, nullptr, nullptr, nullptr); }},
      {"row starts are null", addRows(1, nullptr, columns, one)},
      {"row starts begin with 1, not with 0", addRows(1, late, columns, one)},
      {"decrease from 2 to 1 at row 1", addRows(2, down, columns, one)},
      {"values of the row terms", addRows(1, start, columns, nullptr)},
      {"row 2 (\"a\"): column 2 of term 1", addRows(1, start, beyond, one, names)},
      {"row 3 (\"b\"): column 2 of term 0", addRows(2, singles, beyond, one, names)},
      {"row 2: column -1 of term 1", addRows(1, start, negative, one)},
      {"row 2: coefficient nan of column 1", addRows(1, start, columns, nans)},
      {"row 2: coefficient -1e+20 of column 1", addRows(1, start, columns, bigs)},
      {"row 2: lower bound nan", addRows(1, start, columns, one, nullptr, &nan)},
      {"objective 1 (\"o\"): coefficient inf",
       [&](trpRec* m) { return kavo_add_objective(m, 0, 0, 2, columns, infs, "o"); }},
      {"objective 1: the constant nan",
       [&](trpRec* m) { return kavo_add_objective(m, 0, nan, 0, nullptr, nullptr, nullptr); }},
      {"objective 1: the sense", [&](trpRec* m) { return kavo_add_objective(m, 2, 0, 0, nullptr, nullptr, nullptr); }},
      {"objective number", [&](trpRec* m) { return kavo_set_objective_number(m, -1); }},
      {"start value of column 1 is infinite", [&](trpRec* m) { return kavo_set_start(m, infs, nullptr); }},
      {"no element 2", [&](trpRec* m) { return kavo_set_suffix(m, KAVO_ROW, "s", 2, beyond, one); }},
      {"element 1 is NaN", [&](trpRec* m) { return kavo_set_suffix(m, KAVO_COLUMN, "s", 2, columns, nans); }},
      {"no kind of element 7", [&](trpRec* m) { return kavo_set_suffix(m, 7, "s", 0, nullptr, nullptr); }},
      {"option name is empty", [&](trpRec* m) { return kavo_set_option(m, "", "1", nullptr, 0); }},
      {"empty model", [&](trpRec* m) { return kavo_read(m, "nosuch.nl"); }},
      {"no link is open", [&](trpRec* m) { return kavo_solve(m); }},
  };
  expectRefused(fillSmall, calls);
}

}  // namespace
}  // namespace kavo_test
