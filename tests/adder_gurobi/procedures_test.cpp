// Starts, relaxation, conflicts and changes on the real library; the answers are worked out by hand.
#include <fmt/format.h>
#include <gmock/gmock.h>

#include "grb/solver.h"
#include "tests/grb/blocks.h"
#include "tests/grb/listeners.h"

namespace grb {
namespace {

namespace tag = tav::opt::tag;
using tav::opt::Termination;
using testing::HasSubstr;

constexpr double kTolerance = 1e-6;

std::shared_ptr<const Library> realGurobi() {
  static const auto kLibrary = Library::open(GRBLINK_BRIDGE_PATH);
  return kLibrary;
}

class RealProcedureTest : public testing::Test {
 protected:
  RealProcedureTest() {
    solver.setLog(log);
    solver.setup();
  }
  void set(const std::string& name, int value) {
    solver.makeModelAttributes("grb", {})->get(name).as<int>().set(value);
  }
  std::uint64_t space() { return solver.makeVariableAdder(tag::kIntervalDomain, {})->variableSpace(); }
  void addVariables(const tav::opt::VariableContainer& block) {
    solver.makeVariableAdder(tag::kIntervalDomain, {})->add(block);
  }
  void add(std::string_view domain, const std::vector<Function>& given, const std::vector<Given>& more = {},
           const OwnGroup& own = {}) {
    solver.makeConstraintAdder(domain, tag::kLinearFunction)->add(functions(space(), given, more, own));
  }
  double level(int i) {
    return solver.makeVariableContainers({}).get(tav::opt::VariableQuantity::level).as<double>().get(i);
  }

  std::shared_ptr<TextLog> log = std::make_shared<TextLog>();
  Solver solver{realGurobi()};
};

// x + y >= 8 and x + 2y <= 4 with x and y between 0 and 5, in which 0 <= y is what makes the rows contradict.
class Contradiction : public RealProcedureTest {
 protected:
  void load(double ofColumns, double ofFirstRow) {
    addVariables(variables({0, 0}, {{0, 0}, {5, 5}}, {}, {{"feaspref", values<double>({ofColumns, ofColumns})}}));
    add(tag::kSenseDomain, {{0, {0}, {3}}});
    add(tag::kStaticBoundedDomain, {{0, {0, 1}, {1, 1}, -8}, {1, {0, 1}, {1, 2}, -4}}, {},
        {{"feaspref", values<double>({ofFirstRow, 0})}});
  }
};

TEST_F(Contradiction, HasAConflictWithoutWhichTheRestIsFeasible) {
  for (const int iis : {1, 2}) {
    solver.clear();
    load(1, 1);
    set("iis", iis);
    solver.solve();
    const auto found = solver.conflict();
    ASSERT_TRUE(found);
    EXPECT_TRUE(found->isMinimal);
    // The rows alone allow x = 12, y = -4: a bound must take part. x <= 5 is enough (y >= 3 from the first row, and
    // then x + 2y >= 8 + y), and so is y >= 0.
    EXPECT_THAT(found->rows, testing::ElementsAre(0, 1));
    EXPECT_EQ(found->lowerBounds.size() + found->upperBounds.size(), 1U);
    EXPECT_TRUE(found->lowerBounds == std::vector{1} || found->upperBounds == std::vector{0});
    EXPECT_THAT(log->text, HasSubstr("Number of linear constraints in the IIS: 2\nR0 > 8.000000\nR1 < 4.000000\n"));
  }
}

// Only the first row gives way, at the price 1/2 a unit: the largest x + y within the bounds is 4 (y = 0), which is 4
// short of 8; the objective 3x has no say in it but among equals.
TEST_F(Contradiction, IsRelaxedAtTheLowestPriceInAllSixModes) {
  constexpr double kCost[]{2, 2, 0.5, 0.5, 8, 8};  // sum, number, squares of 4 at the price 1/2
  for (int mode = 0; mode < 6; ++mode) {
    SCOPED_TRACE(mode);
    solver.clear();
    load(0, 2);
    set("feasopt", 1);
    set("feasoptmode", mode);
    EXPECT_EQ(solver.solve(), Termination::finished);
    ASSERT_TRUE(solver.relaxation());
    EXPECT_NEAR(*solver.relaxation(), kCost[mode], 1e-4);
    if (mode / 2 != 1) {
      EXPECT_NEAR(level(0), 4, 1e-3);
    }
  }
}

TEST_F(Contradiction, CannotBeRelaxedWhereNothingMayGiveWay) {
  load(0, 0);
  set("feasopt", 1);
  set("feasoptmode", 1);
  EXPECT_EQ(solver.solve(), Termination::infeasible);
  EXPECT_EQ(solver.relaxation(), std::nullopt);
}

TEST_F(RealProcedureTest, EachRecordedStartReachesTheMipSearch) {
  addVariables(variables({1, 1}, {{0, 0}, {9, 9}}, {}, {{"priority", values<double>({1, 2})}}));
  add(tag::kSenseDomain, {{1, {0, 1}, {3, 2}}});
  add(tag::kStaticBoundedDomain, {{1, {0, 1}, {2, 3}, -12.5}, {1, {0, 1}, {4, 1}, -11.5}});
  const auto starts = solver.makeVariableContainers({}).get(tav::opt::VariableQuantity::starts).as<double>();
  const auto both = tav::idx::lib::Range(0, 2);
  starts.set(both, std::vector<double>{0, 1}, 0);
  starts.set(both, std::vector<double>{2, 1}, 1);  // worth 8
  set("mipstart", 1);
  // Best: x = 2, y = 2 is worth 10; x = 1, y = 3 worth 9.
  EXPECT_EQ(solver.solve(), Termination::finished);
  EXPECT_NEAR(level(0), 2, kTolerance);
  EXPECT_NEAR(level(1), 2, kTolerance);
  EXPECT_THAT(log->text, HasSubstr("Copy 2 variables into MIP Start.\nCopy 2 variables into MIP Start.\n"
                                   "Copy 2 variable branching priorities.\n"));
  EXPECT_THAT(log->text, HasSubstr("objective 8")) << "Gurobi took the better start";
}

// max 3x + 2y with x + y <= 4 and x + 3y <= 6: x = 4.
TEST_F(RealProcedureTest, AChangedModelIsSolvedAsChangedFromTheLastBasis) {
  addVariables(variables({0, 0}, {{0, 0}, {10, 10}}));
  add(tag::kSenseDomain, {{1, {0, 1}, {3, 2}}});
  add(tag::kStaticBoundedDomain, {{1, {0, 1}, {1, 1}, -4}, {1, {0, 1}, {1, 3}, -6}});
  set("kappa", 1);
  EXPECT_EQ(solver.solve(), Termination::finished);
  EXPECT_NEAR(level(0), 4, kTolerance);
  ASSERT_TRUE(solver.conditionNumber(false));
  EXPECT_GE(*solver.conditionNumber(false), 1);
  EXPECT_EQ(solver.conditionNumber(true), std::nullopt) << "was not asked for";
  solver.queueCoefficients(0, {0}, {2});
  solver.queueObjective({1}, {4});
  // Corners are now (2, 0) worth 6, (0, 2) worth 8 and (6/5, 8/5) worth 10.
  EXPECT_EQ(solver.solve(), Termination::finished);
  EXPECT_NEAR(level(0), 1.2, kTolerance);
  EXPECT_NEAR(level(1), 1.6, kTolerance);
}

TEST_F(RealProcedureTest, AnLpStartsFromItsOwnLastBasisWithoutAnIteration) {
  addVariables(variables({0, 0}, {{0, 0}, {10, 10}}, {{tav::opt::VariableQuantity::basis, values<int>({3, 1})}}));
  add(tag::kSenseDomain, {{1, {0, 1}, {3, 2}}});
  add(tag::kStaticBoundedDomain, {{1, {0, 1}, {1, 1}, -4}, {1, {0, 1}, {1, 3}, -6}},
      {{tav::opt::RowQuantity::basis, values<int>({2, 3})}});
  set("usebasis", 2);
  EXPECT_EQ(solver.solve(), Termination::finished);
  EXPECT_NEAR(level(0), 4, kTolerance);
  EXPECT_THAT(log->text, HasSubstr("Registering advanced basis. This turns off presolve!\n"));
  EXPECT_THAT(log->text, HasSubstr("Solved in 0 iterations"));
}

// Presolve cannot tell which of the two it is; without it the model is known to be unbounded.
TEST_F(RealProcedureTest, AnUnclearEndOfASmallModelIsCleared) {
  addVariables(variables({0, 0}, {{0, 0}, {1e30, 1e30}}));
  add(tag::kSenseDomain, {{1, {0, 1}, {1, 1}}});
  add(tag::kStaticBoundedDomain, {{1, {0, 1}, {1, -1}, -4}});
  EXPECT_EQ(solver.solve(), Termination::unbounded);
  EXPECT_THAT(log->text, HasSubstr("Resolving with presolve turned off.\n"));
  EXPECT_EQ(solver.makeModelAttributes("grb", {})->get("Presolve").as<int>().get(), -1);
}

}  // namespace
}  // namespace grb
