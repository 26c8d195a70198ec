// The rules of rewriting: the user's model and what is sent, as text, and both ways along the trail.
#include <fmt/format.h>
#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "brel/rewrite/rewrite_beyond.h"
#include "brel/rewrite/solver_model.h"
#include "tests/brel/every_kind.h"

namespace brel::rewrite {
namespace {

using brel_test::Column;
using brel_test::HostModel;
using brel_test::kNone;
using brel_test::Row;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNan;

class Rewritten {
 public:
  Rewritten(const std::vector<Column>& columns, const std::vector<Row>& rows) : model(made(columns, rows)) {}

  /// A line per column, with the names of auxiliary ones, and per row, with the user's row that it stands for.
  std::string text() const {
    std::string result;
    for (std::size_t j = 0; j < model.columnCount(); ++j) {
      result += fmt::format("x{} in [{:g}, {:g}] type {}", j, model.lower()[j], model.upper()[j],
                            static_cast<int>(model.columnType(j)));
      if (j >= user_.columns.count) result += fmt::format(" \"{}\"", model.auxiliaryNames()[j - user_.columns.count]);
      result += '\n';
    }
    constexpr const char* kSigns[]{">=", "<=", "="};
    for (std::size_t r = 0; r < model.rowCount(); ++r) {
      const auto [columns, values] = model.terms(r);
      result += fmt::format("row {}:", model.userRow(r));
      for (std::size_t k = 0; k < columns.size(); ++k) result += fmt::format(" {:+g} x{}", values[k], columns[k]);
      result += fmt::format(" {} {:g}\n", kSigns[static_cast<int>(model.rowType(r))], model.side(r));
    }
    return result;
  }

 private:
  SolverModel made(const std::vector<Column>& columns, const std::vector<Row>& rows) {
    host_.add(columns, rows);
    user_ = userModel(host_);
    return rewrite(user_, nullptr, trail);
  }

  HostModel host_;
  UserModel user_;

 public:
  Trail trail;
  SolverModel model;
};

// x0 free, 0 <= x1 <= 1; the rows of all kinds.
const std::vector<Column> kColumns{{"a", -kNone, kNone}, {"b", 0, 1}};
const Row kAtLeast{"atleast", 2, {{0, 1}, {1, 3}}, kNone};
const Row kAtMost{"atmost", -kNone, {{1, 2}}, 5};
const Row kEqual{"equal", 4, {{0, 1}}, 4};
const Row kFree{"free", -kNone, {{0, 1}, {1, 1}}, kNone};
const Row kRanged{"ranged", 1, {{0, 2}, {1, -1}}, 3};

TEST(Rewrite, TakesTypesAndTightensBinaries) {
  const Rewritten sent({{"", -3, 7, KAVO_BINARY},
                        {"", 1, 1, KAVO_BINARY},
                        {"", -3, 7, KAVO_INTEGER},
                        {"", 2, 7, KAVO_SEMICONTINUOUS},
                        {"", 2, 7, KAVO_SEMIINTEGER}},
                       {});
  EXPECT_EQ(sent.text(),
            "x0 in [0, 1] type 1\n"
            "x1 in [1, 1] type 1\n"
            "x2 in [-3, 7] type 1\n"
            "x3 in [2, 7] type 2\n"
            "x4 in [2, 7] type 3\n");
}

TEST(Rewrite, LeavesFreeRowsOutAndWorksThemOutAfterwards) {
  const Rewritten sent(kColumns, {kFree, kAtMost, {"", -1e30, {}, HUGE_VAL}, kEqual, kAtLeast});
  EXPECT_EQ(sent.text(),
            "x0 in [-1e+20, 1e+20] type 0\n"
            "x1 in [0, 1] type 0\n"
            "row 1: +2 x1 <= 5\n"
            "row 3: +1 x0 = 4\n"
            "row 4: +1 x0 +3 x1 >= 2\n");
  std::vector<double> activity{0, 8, 0, 9, 7}, dual(5, 5);
  std::vector<int> basis(5, KAVO_SUPERBASIC);
  const std::vector<double> point{10, 0.5};
  RowResults results;
  results.solverPrimal = point;
  results.activity = activity;
  results.dual = dual;
  results.basis = basis;
  sent.trail.resultsBack(results);
  EXPECT_THAT(activity, ElementsAre(10.5, 8, 0, 9, 7));
  EXPECT_THAT(dual, ElementsAre(0, 5, 0, 5, 5));
  EXPECT_THAT(basis, ElementsAre(KAVO_BASIC, KAVO_SUPERBASIC, KAVO_BASIC, KAVO_SUPERBASIC, KAVO_SUPERBASIC));
}

TEST(Rewrite, GivesRangedRowsAColumn) {
  const Rewritten sent(kColumns, {kRanged, kAtMost, {"", 5, {{1, 1}}, 2}});
  EXPECT_EQ(sent.text(),
            "x0 in [-1e+20, 1e+20] type 0\n"
            "x1 in [0, 1] type 0\n"
            "x2 in [1, 3] type 0 \"ranged_range\"\n"
            "x3 in [5, 2] type 0 \"\"\n"
            "row 0: +2 x0 -1 x1 -1 x2 = 0\n"
            "row 1: +2 x1 <= 5\n"
            "row 2: +1 x1 -1 x3 = 0\n")
      << "crossed sides are sent as they are";
}

TEST(Rewrite, TakesResultsOfRangedRowsFromTheirColumns) {
  struct Case {
    int equality, column, expected;
  };
  for (const Case& c : {Case{KAVO_BASIC, KAVO_BASIS_LOWER, KAVO_BASIC}, Case{KAVO_BASIS_LOWER, KAVO_BASIC, KAVO_BASIC},
                        Case{KAVO_BASIS_LOWER, KAVO_BASIS_LOWER, KAVO_BASIS_LOWER},
                        Case{KAVO_BASIS_UPPER, KAVO_BASIS_UPPER, KAVO_BASIS_UPPER},
                        Case{KAVO_BASIS_LOWER, KAVO_SUPERBASIC, KAVO_SUPERBASIC}}) {
    const Rewritten sent(kColumns, {kFree, kRanged});
    const std::vector<double> point{1.75, 0.5, 3}, solverActivity{0.25};
    const std::vector<int> columnBasis{KAVO_BASIC, KAVO_BASIS_LOWER, c.column}, rowBasis{c.equality};
    // As scattered before: the equality's own values stand at the user's row.
    std::vector<double> activity{0, 0.25}, dual{0, 7};
    std::vector<int> basis{0, c.equality};
    RowResults results;
    results.solverPrimal = point;
    results.solverColumnBasis = columnBasis;
    results.solverActivity = solverActivity;
    results.solverRowBasis = rowBasis;
    results.activity = activity;
    results.dual = dual;
    results.basis = basis;
    sent.trail.resultsBack(results);
    EXPECT_THAT(activity, ElementsAre(2.25, 3.25));
    EXPECT_THAT(dual, ElementsAre(0, 7)) << "the equality's";
    EXPECT_EQ(basis[1], c.expected);
  }
}

TEST(Rewrite, WorksOutStartsOfItsColumns) {
  constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();
  const Rewritten sent(kColumns, {kRanged, kFree, {"", 0, {{1, 2}}, 1}});
  const auto startsOf = [&](const std::vector<double>& user) {
    Starts starts;
    starts.userColumn = user;
    starts.column = user;
    if (!user.empty()) starts.column.resize(sent.model.columnCount(), kUnknown);
    sent.trail.startsForward(starts);
    return starts.column;
  };
  EXPECT_THAT(startsOf({2, 1}), ElementsAre(2, 1, 3, 2));
  EXPECT_THAT(startsOf({kUnknown, 1}), ElementsAre(IsNan(), 1, IsNan(), 2)) << "unknown where a column of the row is";
  EXPECT_THAT(startsOf({}), IsEmpty());
}

// The basis stays as large as it was, whatever the row's status is.
TEST(Rewrite, PutsTheStatusOfARangedRowOnItsColumn) {
  for (const int status : std::vector<int>{KAVO_BASIS_LOWER, KAVO_BASIS_UPPER, KAVO_BASIC, 0}) {
    const Rewritten sent(kColumns, {kFree, kRanged, kEqual});
    Starts start;
    start.columnBasis = {KAVO_BASIC, KAVO_BASIS_UPPER, 0};
    start.rowBasis = {status, KAVO_BASIS_LOWER};
    sent.trail.startsForward(start);
    EXPECT_THAT(start.columnBasis, ElementsAre(KAVO_BASIC, KAVO_BASIS_UPPER, status));
    EXPECT_THAT(start.rowBasis, ElementsAre(status == 0 ? 0 : KAVO_BASIS_LOWER, KAVO_BASIS_LOWER));
  }
}

TEST(Rewrite, WorksOutStartsOfColumnsThatStandForExpressions) {
  constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();
  HostModel host;
  brel_test::fillEveryKind(host);
  const UserModel user = userModel(host);
  Trail trail;
  const SolverModel sent = rewrite(user, rewriteBeyond(user, 1, {}), trail);
  const auto startsOf = [&](const std::vector<double>& given) {
    Starts starts;
    starts.userColumn = given;
    starts.column = given;
    starts.column.resize(sent.columnCount(), kUnknown);
    trail.startsForward(starts);
    return std::vector(starts.column.begin() + 4, starts.column.end());
  };
  // |y|, x <= 1, y >= 3, |y| again for the row with two sides
  EXPECT_THAT(startsOf({0.5, -1.5, 1, 0}), ElementsAre(1.5, 1, 0, 1.5));
  EXPECT_THAT(startsOf({0.5, kUnknown, 1, 0}), ElementsAre(IsNan(), 1, IsNan(), IsNan()));
}

}  // namespace
}  // namespace brel::rewrite
