#include <gmock/gmock.h>

#include <limits>

#include "grb/adder/indic_adder.h"
#include "grb/adder/sos_adder.h"
#include "grb/adder/var_adder.h"
#include "tests/grb/blocks.h"
#include "tests/tav/thrown.h"

namespace grb {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Q = tav::opt::RowQuantity;

Symbol list(std::vector<double> weights) {
  return Symbol::ofVector(std::make_shared<tav::math::Vector<double>>(std::move(weights)));
}

/// A set has no coefficients and no constant of its own.
Function setOf(int type, std::vector<int> members) {
  std::vector<double> ones(members.size(), 1);
  return {type, std::move(members), std::move(ones)};
}

class SetAdderTest : public testing::Test, protected OpenRecord {
 protected:
  SetAdderTest() : OpenRecord(5) {}
  tav::idx::List add(const std::vector<Function>& sets, const std::vector<Symbol>& weights = {}) {
    std::vector<Given> more;
    if (!weights.empty()) more.push_back({Q::weights, values(weights)});
    return adder.add(functions(data->variableSpace(), sets, more));
  }

  SOSAdder adder{data};
};

TEST_F(SetAdderTest, SendsASetPerCallWithTheWeightsThatItCarries) {
  EXPECT_THAT(
      positionsOf(add({setOf(0, {3, 1}), setOf(1, {0, 2, 4}), setOf(1, {2, 1, 0}), setOf(0, {4, 3}), setOf(0, {2})},
                      {list({1, 2.5}), list({7, 3, 5}), Symbol::ofConstant(4), list({}), list({9})})),
      ElementsAre(0, 1, 2, 3, 4));
  EXPECT_THAT(gurobi->takeCalls(),
              ElementsAre(kReadCount, "GRBaddsos(m1, 1, 2, [1], [0], [3, 1], [1, 2.5])",
                          "GRBaddsos(m1, 1, 3, [2], [0], [0, 2, 4], [7, 3, 5])",
                          "GRBaddsos(m1, 1, 3, [2], [0], [2, 1, 0], [4, 4, 4])",
                          "GRBaddsos(m1, 1, 2, [1], [0], [4, 3], null)", "GRBaddsos(m1, 1, 1, [1], [0], [2], [9])"));
  EXPECT_THAT(positionsOf(add({setOf(1, {0, 1, 2})})), ElementsAre(5));
  EXPECT_EQ(gurobi->takeCalls().back(), "GRBaddsos(m1, 1, 3, [2], [0], [0, 1, 2], null)");
}

TEST_F(SetAdderTest, RefusesWhatItCanCheckBeforeAnyCall) {
  const Function sound = setOf(1, {0, 1, 2});
  const struct {
    Function set;
    std::vector<Symbol> weights;
    const char* message;
  } cases[]{
      {setOf(2, {0, 1}), {}, "Domain type not supported."},
      {setOf(-1, {0, 1}), {}, "Domain type not supported."},
      {setOf(0, {0, 5}), {}, "Element 1 of the block: there is no variable 5."},
      {setOf(0, {0, 3, 0}), {}, "Element 1 of the block: variable 0 is in the set more than once."},
      {sound, {list({1, 2})}, "Element 1 of the block: the set has 3 members and 2 weights."},
      {sound, {list({1, kNaN, 2})}, "Element 1 of the block: a weight is not finite."},
      {sound, {Symbol::ofConstant(kNaN)}, "Element 1 of the block: a weight is not finite."},
      {sound,
       {list({2, 1, 2})},
       "Element 1 of the block: two members have the weight 2, which leaves the order of the set open."},
      {sound, {Symbol::ofLinear({})}, "Input not supported"},
  };
  for (const auto& c : cases) {
    std::vector<Symbol> weights = c.weights;
    if (!weights.empty()) weights.insert(weights.begin(), list({1, 2, 3}));
    EXPECT_EQ(messageOf([&] { add({sound, c.set}, weights); }), c.message);
  }
  EXPECT_EQ(messageOf([&] { add({sound}, {list({}), list({})}); }),
            "'type' (which is 1) must be equal to 'count' (which is 2).");
  EXPECT_EQ(messageOf([&] { adder.add(functions(data->variableSpace() + 1, {sound})); }), "Input not supported");
  EXPECT_EQ(add({}).size(), 0);
  EXPECT_THAT(gurobi->calls(), IsEmpty());
  add({setOf(0, {0, 1, 2})}, {list({2, 1, 2})});  // the order of a set of type 1 does not matter
  EXPECT_EQ(gurobi->takeCalls().back(), "GRBaddsos(m1, 1, 3, [1], [0], [0, 1, 2], [2, 1, 2])");
}

class IndicAdderTest : public testing::Test, protected OpenRecord {
 protected:
  // Of these, 1, 2 and 3 can only be 0 or 1; 4 is added besides the blocks, and 5 by a later one.
  IndicAdderTest() {
    VarAdder(data).add(variables({0, 1, 1, 1}, {{0, 0, 1, -0.5}, {1, 1, 1, 1.5}}));
    data->model->addVar({}, {}, 0, 0, 1, 'I', nullptr);
    data->variables.add();
    VarAdder(data).add(variables({1, 1, 1, 3, 2}, {{0, 0, -1, 0, 0}, {1, 2, 1, 1, 1}}));
    data->model->updateIfPending();
    gurobi->takeCalls();
  }
  tav::idx::List add(const std::vector<Function>& rows, const Links& links, const std::vector<Given>& more = {}) {
    return adder.add(linkedRows(data->variableSpace(), rows, links, more));
  }

  IndicAdder adder{data};
};

TEST_F(IndicAdderTest, SendsARowPerCallWithTheValueThatSwitchesItOn) {
  const Function row{1, {0, 3}, {2, -1}, -4};
  EXPECT_THAT(positionsOf(add({row, {0, {}, {}, 1}, row, row}, {{3, 2, 3, 2}, {1, 2, 3, 5}},
                              {{Q::name, values<const char*>({"a", "", "b", "c"})}})),
              ElementsAre(0, 1, 2, 3));
  EXPECT_THAT(gurobi->takeCalls(),
              ElementsAre(kReadCount, R"(GRBaddgenconstrIndicator(m1, "a", 1, 1, 2, [0, 3], [2, -1], 'L', 4))",
                          R"(GRBaddgenconstrIndicator(m1, "", 2, 0, 0, null, null, 'G', -1))",
                          R"(GRBaddgenconstrIndicator(m1, "b", 3, 1, 2, [0, 3], [2, -1], 'L', 4))",
                          R"(GRBaddgenconstrIndicator(m1, "c", 5, 0, 2, [0, 3], [2, -1], 'L', 4))"));
  ASSERT_EQ(data->generalConstraints.size(), 4u);
  EXPECT_EQ(data->generalConstraints[3].kind, GeneralConstraint::Kind::indicator);
  EXPECT_EQ(data->generalConstraints[3].position, 3);
}

TEST_F(IndicAdderTest, RefusesWhatItCanCheckBeforeAnyCall) {
  const Function sound{0, {0}, {1}};
  const struct {
    std::vector<Function> rows;
    Links links;
    std::string message;
  } cases[]{
      {{sound, {3, {0}, {1}}}, {{2, 2}, {1, 1}}, "Domain type not supported."},
      {{sound, sound}, {{3, 0}, {1, 1}}, "Domain type not supported."},
      {{sound, sound}, {{1, 3}, {1, 1}}, "Domain type not supported."},
      {{sound}, {{4}, {1}}, "Domain type not supported."},
      {{sound}, {{std::numeric_limits<int>::min()}, {1}}, "Domain type not supported."},
      {{{0, {10}, {1}}}, {{2}, {1}}, "Element 0 of the block: there is no variable 10."},
      {{sound}, {{2}, {10}}, "Element 0 of the block: there is no variable 10."},
      {{sound}, {{2}, {-1}}, "Element 0 of the block: there is no variable -1."},
      {{sound, sound}, {{2}, {1}}, "'type' (which is 1) must be equal to 'count' (which is 2)."},
      {{sound, sound}, {{2, 2}, {1}}, "Input not supported"},
  };
  for (const auto& c : cases) EXPECT_EQ(messageOf([&] { add(c.rows, c.links); }), c.message);
  for (const int other : {0, 4, 6, 7, 8, 9}) {
    EXPECT_EQ(messageOf([&] { add({sound, sound}, {{2, 2}, {1, other}}); }),
              fmt::format("Element 1 of the block: the linked variable {} is not binary.", other));
  }
  auto foreign = linkedRows(data->variableSpace(), {sound}, {{2}, {1}});
  foreign.setGroup(
      tav::opt::tag::kConstraintLink,
      linkedRows(data->variableSpace() + 1, {sound}, {{2}, {1}}).group(tav::opt::tag::kConstraintLink).pointer());
  EXPECT_EQ(messageOf([&] { adder.add(foreign); }), "Input not supported");
  EXPECT_EQ(messageOf([&] { adder.add(linkedRows(data->variableSpace() + 1, {sound}, {{2}, {1}})); }),
            "Input not supported");
  EXPECT_EQ(add({}, {}).size(), 0);
  EXPECT_THAT(gurobi->calls(), IsEmpty());
}

}  // namespace
}  // namespace grb
