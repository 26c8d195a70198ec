// What the adders send, solved by the real library; the answers are worked out by hand.
#include <gmock/gmock.h>

#include "grb/adder/block_reading.h"
#include "grb/solver.h"
#include "tests/grb/blocks.h"
#include "tests/grb/listeners.h"
#include "tests/tav/thrown.h"

namespace grb {
namespace {

namespace tag = tav::opt::tag;
using testing::DoubleNear;
using testing::ElementsAre;
using testing::Pointwise;
using Q = tav::opt::RowQuantity;
using Symbol = tav::math::Symbol<double>;

constexpr double kTolerance = 1e-4;  // of quadratic models; barrier ends at about 1e-6

std::shared_ptr<const Library> realGurobi() {
  static const auto kLibrary = Library::open(GRBLINK_BRIDGE_PATH);
  return kLibrary;
}

class RealModelTest : public testing::Test {
 protected:
  RealModelTest() {
    solver.setLog(std::make_shared<TextLog>());
    solver.setup();
  }
  auto rowAdder(std::string_view domain, std::string_view function) {
    return solver.makeConstraintAdder(domain, function);
  }
  std::uint64_t space() { return solver.makeVariableAdder(tag::kIntervalDomain, {})->variableSpace(); }
  void addVariables(const tav::opt::VariableContainer& block) {
    solver.makeVariableAdder(tag::kIntervalDomain, {})->add(block);
  }
  // Variables between 0 and `upper` and the objective: maximise the sum of (i + 1) * x[i].
  void maximize(std::size_t count, double upper) {
    addVariables(variables(std::vector<int>(count, 0), {std::vector(count, 0.0), std::vector(count, upper)}));
    Function objective{1, {}, {}};
    for (int i = 0; i < static_cast<int>(count); ++i) {
      objective.positions.push_back(i);
      objective.coefficients.push_back(i + 1);
    }
    rowAdder(tag::kSenseDomain, tag::kLinearFunction)->add(functions<Function>(space(), {objective}));
  }
  std::vector<double> solved() {
    EXPECT_EQ(solver.solve(), tav::opt::Termination::finished);
    return solver.makeVariableContainers({}).get(tav::opt::VariableQuantity::level).as<double>().getAll();
  }

  Solver solver{realGurobi()};
};

// min x^2 + 2xy + 3y^2 - 4x + 5: 2x + 2y = 4 and 2x + 6y = 0.
TEST_F(RealModelTest, AQuadraticObjectiveIsNeitherDoubledNorHalved) {
  addVariables(variables({0, 0}, {{-10, -10}, {10, 10}}));
  const auto objective = rowAdder(tag::kSenseDomain, tag::kQuadraticFunction);
  objective->add(functions<Quadratic>(space(), {{{0, {0}, {-4}, 5}, {0, 1, 1}, {0, 0, 1}, {1, 2, 3}}}));
  EXPECT_THAT(solved(), Pointwise(DoubleNear(kTolerance), {3.0, -1.0}));
  const auto value = solver.makeConstraintContainers(objective, {}, {}).first.get(5).as<double>();
  EXPECT_THAT(value.getAll(), ElementsAre(DoubleNear(-1, kTolerance)));
}

// max x + y with x^2 + y^2 <= r is the root of 2r, which grows by 1/2 per unit at r = 2.
TEST_F(RealModelTest, QuadraticRowsHaveTheSlacksAndMarginalsOfLinearOnes) {
  addVariables(variables({0, 0}, {{0, 0}, {10, 10}}));
  const auto rows = rowAdder(tag::kStaticBoundedDomain, tag::kQuadraticFunction);
  const auto circle = [](double r) { return Quadratic{{1, {}, {}, -r}, {0, 1}, {0, 1}, {1, 1}}; };
  rows->add(functions<Quadratic>(space(), {circle(2), circle(8)}));
  rowAdder(tag::kSenseDomain, tag::kLinearFunction)->add(functions<Function>(space(), {{1, {0, 1}, {1, 1}}}));
  solver.makeModelAttributes("grb", {})->get("QCPDual").as<int>().set(1);
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
    rowAdder(tag::kSosDomain, tag::kIdentityFunction)
        ->add(functions<Function>(space(), {set}, {{Q::weights, values<Symbol>({c.weights})}}));
    EXPECT_EQ(solved(), c.expected);
  }
}

TEST_F(RealModelTest, ALinkSwitchesItsRowOnAtItsValue) {
  for (const int type : {2, 3}) {
    for (const double fixed : {0.0, 1.0}) {
      solver.clear();
      maximize(1, 5);
      addVariables(variables({1}, {{fixed}, {fixed}}));
      solver.makeLinkAdder(tag::kStaticBoundedDomain, tag::kLinearFunction, tag::kConstraintLink)
          ->add(linkedRows(space(), {{1, {0}, {1}, -2}}, {{type}, {1}}));
      EXPECT_THAT(solved(), ElementsAre(fixed == type - 2 ? 2 : 5, fixed)) << type;
    }
  }
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
