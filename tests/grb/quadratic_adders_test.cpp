#include <gmock/gmock.h>

#include <limits>

#include "grb/adder/lin_obj_adder.h"
#include "grb/adder/quad_con_adder.h"
#include "grb/adder/quad_obj_adder.h"
#include "tests/grb/blocks.h"
#include "tests/tav/thrown.h"

namespace grb {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Q = tav::opt::RowQuantity;

constexpr const char* kOneObjective = "Multiple objectives only supported with linear objectives.";

class QuadraticAddersTest : public testing::Test, protected OpenRecord {
 protected:
  QuadraticAddersTest() : OpenRecord(4) {}
  template <class F>
  tav::opt::ConstraintContainer blockOf(const std::vector<F>& given, const std::vector<Given>& more = {}) const {
    return functions(data->variableSpace(), given, more);
  }

  QuadConAdder rows{data};
  QuadObjAdder objective{data};
};

TEST_F(QuadraticAddersTest, SendARowPerCallWithItsProductsAsStored) {
  const std::vector<Quadratic> block{{{1, {2}, {2}, -4}, {0}, {1}, {1}},
                                     {{0, {}, {}, 0.5}, {3, 1, 3}, {1, 3, 3}, {2, -2, 0.25}},
                                     {{2, {0, 0}, {1, 1}, 0}, {}, {}, {}}};
  EXPECT_THAT(positionsOf(rows.add(blockOf(block, {{Q::name, values<const char*>({"xy", "", "c"})}}))),
              ElementsAre(0, 1, 2));
  EXPECT_THAT(gurobi->takeCalls(),
              ElementsAre(kReadCount, R"(GRBaddqconstr(m1, 1, [2], [2], 1, [0], [1], [1], 'L', 4, "xy"))",
                          R"(GRBaddqconstr(m1, 0, null, null, 3, [3, 1, 3], [1, 3, 3], [2, -2, 0.25], 'G', -0.5, ""))",
                          R"(GRBaddqconstr(m1, 2, [0, 0], [1, 1], 0, null, null, null, 'E', -0, "c"))"));
  data->options.item(IntOption::names)->set(0, 0);
  EXPECT_THAT(positionsOf(rows.add(blockOf<Quadratic>({block[0]}, {{Q::name, values<const char*>({"d"})}}))),
              ElementsAre(3));
  EXPECT_THAT(gurobi->takeCalls().back(), testing::EndsWith(R"('L', 4, ""))"));
}

TEST_F(QuadraticAddersTest, SendTheOneObjective) {
  EXPECT_THAT(positionsOf(objective.add(blockOf<Quadratic>({{{1, {2, 0, 2}, {3, 1, 4}, 7}, {1, 0}, {1, 2}, {5, 6}}}))),
              ElementsAre(0));
  EXPECT_THAT(
      gurobi->takeCalls(),
      ElementsAre(kReadCount, R"(GRBsetintattr(m1, "ModelSense", -1))", "GRBaddqpterms(m1, 2, [1, 0], [1, 2], [5, 6])",
                  R"(GRBsetdblattrlist(m1, "Obj", 2, [0, 2], [1, 7]))", R"(GRBsetdblattr(m1, "ObjCon", 7))"));
}

// Every order of two objectives of which one at least is quadratic, and beside a nonlinear one.
TEST_F(QuadraticAddersTest, NoObjectiveStandsBesideAQuadraticOne) {
  LinObjAdder linear(data);
  const auto addLinear = [&] { linear.add(blockOf<Function>({{0, {0}, {1}}})); };
  const auto addQuadratic = [&] { objective.add(blockOf<Quadratic>({{{0, {}, {}}, {0}, {0}, {1}}})); };
  const auto expectRefusal = [&](const auto& add) {
    gurobi->takeCalls();
    EXPECT_EQ(messageOf<tav::opt::SupportException>(add), kOneObjective);
    EXPECT_THAT(gurobi->calls(), IsEmpty());
  };
  expectRefusal([&] { objective.add(blockOf<Quadratic>({{{0, {}, {}}, {}, {}, {}}, {{7, {}, {}}, {}, {}, {}}})); });
  addLinear();
  expectRefusal(addQuadratic);
  data->linearObjectives.clear();
  data->nonlinearObjectives.add();
  expectRefusal(addQuadratic);
  expectRefusal(addLinear);
  data->nonlinearObjectives.clear();
  addQuadratic();
  expectRefusal(addQuadratic);
  expectRefusal(addLinear);
}

TEST_F(QuadraticAddersTest, RefuseWhatCanBeCheckedBeforeAnyCall) {
  const Quadratic sound{{0, {0}, {1}}, {0}, {1}, {1}};
  const auto with = [&](auto change) {
    Quadratic changed = sound;
    change(changed);
    return changed;
  };
  using Block = std::vector<Quadratic>;
  const struct {
    Block block;
    const char* message;
  } cases[]{
      {{with([](Quadratic& q) { q.linear.type = 3; })}, "Domain type not supported."},
      {{with([](Quadratic& q) { q.linear.type = -1; })}, "Domain type not supported."},
      {{with([](Quadratic& q) { q.linear.positions = {4}; })}, "Element 0 of the block: there is no variable 4."},
      {{with([](Quadratic& q) { q.linear.constant = kInf; })},
       "Element 0 of the block: the constant inf is not finite."},
      {{with([](Quadratic& q) { q.first = {-1}; })}, "Element 0 of the block: there is no variable -1."},
      {{with([](Quadratic& q) { q.second = {4}; })}, "Element 0 of the block: there is no variable 4."},
      {{with([](Quadratic& q) { q.values = {kNaN}; })},
       "Element 0 of the block: the coefficient nan of variables 0 and 1 is not finite."},
      {{with([](Quadratic& q) { q.second = {1, 1}; })}, "Element 0 of the block: 1 positions meet 2 others."},
  };
  const auto expectRefusal = [&](const tav::opt::ConstraintContainer& block, const std::string& message) {
    EXPECT_EQ(messageOf([&] { rows.add(block); }), message);
    EXPECT_EQ(messageOf([&] { objective.add(block); }), message);
  };
  for (const auto& c : cases) expectRefusal(blockOf(c.block), c.message);
  expectRefusal(functions(data->variableSpace() + 1, Block{sound}), "Input not supported");
  expectRefusal(blockOf<Function>({sound.linear}), "Input not supported");
  // Nobody looks at the terms themselves when there are too many of them to be counted.
  auto endless = std::make_shared<tav::math::QuadraticFunction<double>>();
  endless->linear.space = data->variableSpace();
  const auto size = std::size_t{std::numeric_limits<int>::max()} + 1;
  endless->first = endless->second = {static_cast<const int*>(nullptr), size};
  endless->values = {static_cast<const double*>(nullptr), size};
  const auto symbol = Symbol::ofQuadratic(endless);
  const auto tooLong = blockOf<Quadratic>({sound}, {{Q::function, values<Symbol>({symbol})}});
  EXPECT_THAT(messageOf([&] { rows.add(tooLong); }), testing::StartsWith("Cannot cast 2147483648 from "));
  const std::string name(256, 'n');
  EXPECT_EQ(messageOf([&] { rows.add(blockOf<Quadratic>({sound}, {{Q::name, values<const char*>({name.c_str()})}})); }),
            "Element 0 of the block: its name has 256 bytes.");
  EXPECT_EQ(rows.add(blockOf<Quadratic>({})).size() + objective.add(blockOf<Quadratic>({})).size(), 0);
  EXPECT_THAT(gurobi->calls(), IsEmpty());
  EXPECT_EQ(data->quadraticRows.count() + data->quadraticObjectives.count(), 0);
}

}  // namespace
}  // namespace grb
