// What the adders send, solved by the real library; the answers are worked out by hand.
#include <gmock/gmock.h>

#include "grb/adder/block_reading.h"
#include "tests/grb/real_solver.h"
#include "tests/tav/thrown.h"

namespace grb {
namespace {

namespace tag = tav::opt::tag;
using testing::DoubleNear;
using testing::Pointwise;
using Q = tav::opt::RowQuantity;

constexpr double kTolerance = 1e-4;  // of quadratic models; barrier ends at about 1e-6

class RealModelTest : public RealSolver {
 protected:
  // Variables between 0 and `upper` and the objective: maximise the sum of (i + 1) * x[i].
  void maximize(std::size_t count, double upper) {
    addVariables(variables(std::vector<int>(count, 0), {std::vector(count, 0.0), std::vector(count, upper)}));
    Function objective{1, {}, {}};
    for (int i = 0; i < static_cast<int>(count); ++i) {
      objective.positions.push_back(i);
      objective.coefficients.push_back(i + 1);
    }
    add(tag::kSenseDomain, tag::kLinearFunction, functions<Function>(space(), {objective}));
  }
  std::vector<double> solved() {
    EXPECT_EQ(solver.solve(), tav::opt::Termination::finished);
    return ofVariables(tav::opt::VariableQuantity::level).getAll();
  }
};

// max x + y with x^2 + y^2 <= r is the root of 2r, which grows by 1/2 per unit at r = 2.
TEST_F(RealModelTest, QuadraticRowsHaveTheSlacksAndMarginalsOfLinearOnes) {
  addVariables(variables({0, 0}, {{0, 0}, {10, 10}}));
  const auto rows = solver.makeConstraintAdder(tag::kStaticBoundedDomain, tag::kQuadraticFunction);
  const auto circle = [](double r) { return Quadratic{{1, {}, {}, -r}, {0, 1}, {0, 1}, {1, 1}}; };
  rows->add(functions<Quadratic>(space(), {circle(2), circle(8)}));
  add(tag::kSenseDomain, tag::kLinearFunction, functions<Function>(space(), {{1, {0, 1}, {1, 1}}}));
  set("QCPDual", 1);
  EXPECT_THAT(solved(), Pointwise(DoubleNear(kTolerance), {1.0, 1.0}));
  const auto results = solver.makeConstraintContainers(rows, {}, {}).first;
  EXPECT_THAT(results.get(Q::slack).as<double>().getAll(), Pointwise(DoubleNear(kTolerance), {0.0, -6.0}));
  EXPECT_THAT(results.get(Q::marginal).as<double>().getAll(), Pointwise(DoubleNear(kTolerance), {0.5, 0.0}));
}

TEST_F(RealModelTest, AnOrderedSetKeepsTheOrderOfItsWeightsOrElseOfItsMembers) {
  const struct {
    int type;
    Symbol weights;
    std::vector<double> expected;
  } cases[]{
      {0, Symbol::ofConstant(1), {0, 0, 1}},
      {1, Symbol::ofConstant(1), {1, 0, 1}},
      {1, Symbol::ofVector(std::make_shared<tav::math::Vector<double>>(std::vector<double>{})), {1, 0, 1}},
      {1, Symbol::ofVector(std::make_shared<tav::math::Vector<double>>(std::vector<double>{1, 3, 2})), {0, 1, 1}},
  };
  for (const auto& c : cases) {
    solver.clear();
    maximize(3, 1);
    const Function set{c.type, {2, 0, 1}, {1, 1, 1}};
    add(tag::kSosDomain, tag::kIdentityFunction,
        functions<Function>(space(), {set}, {{Q::weights, values<Symbol>({c.weights})}}));
    EXPECT_EQ(solved(), c.expected);
  }
}

// Presolve cannot tell which of the two it is; without it the model is known to be unbounded.
TEST_F(RealModelTest, AnUnclearEndOfASmallModelIsCleared) {
  addVariables(variables({0, 0}, {{0, 0}, {1e30, 1e30}}));
  add(tag::kSenseDomain, tag::kLinearFunction, functions<Function>(space(), {{1, {0, 1}, {1, 1}}}));
  add(tag::kStaticBoundedDomain, tag::kLinearFunction, functions<Function>(space(), {{1, {0, 1}, {1, -1}, -4}}));
  EXPECT_EQ(solver.solve(), tav::opt::Termination::unbounded);
  EXPECT_THAT(log->text, testing::HasSubstr("Resolving with presolve turned off.\n"));
  EXPECT_EQ(option("Presolve").as<int>().get(), -1);
}

TEST_F(RealModelTest, AConditionNumberIsToldWhereItIsAskedFor) {
  maximize(2, 1);
  add(tag::kStaticBoundedDomain, tag::kLinearFunction, functions<Function>(space(), {{1, {0, 1}, {1, 1}, -1}}));
  set("kappa", 1);
  EXPECT_EQ(solved(), (std::vector<double>{0, 1}));
  ASSERT_TRUE(solver.conditionNumber(false));
  EXPECT_GE(*solver.conditionNumber(false), 1);
  EXPECT_EQ(solver.conditionNumber(true), std::nullopt);
}

// The library drops all that is queued when it refuses an add call, and nothing that an update had folded in.
TEST_F(RealModelTest, ARefusedCallLosesWhatIsQueuedAndTheRecordKnows) {
  for (const bool updated : {true, false}) {
    const auto data = std::make_shared<Data>(realGurobi());
    data->model->start();
    LockedModel locked(*data);
    EXPECT_THAT(messageOf<GurobiException>([&] {
                  locked.add([&](GurobiModel& model) {
                    model.addVar({}, {}, 0, 0, 1, 'C', nullptr);
                    data->variables.add();
                    if (updated) model.updateIfPending();
                    model.addGenConstrIndicator("", 0, 2, {}, {}, 'L', 1);
                  });
                }),
                "Problem adding general constraint");
    EXPECT_EQ(data->isInStepAfterError(), updated);
  }
}

}  // namespace
}  // namespace grb
