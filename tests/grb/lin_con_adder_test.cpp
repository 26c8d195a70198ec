#include "grb/adder/lin_con_adder.h"

#include <gmock/gmock.h>

#include "grb/result/lin_con_domain.h"
#include "tests/grb/blocks.h"
#include "tests/tav/thrown.h"

namespace grb {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNan;
using Q = tav::opt::RowQuantity;

class LinConAdderTest : public testing::Test, protected OpenRecord {
 protected:
  LinConAdderTest() : OpenRecord(3) {}
  tav::opt::ConstraintContainer rows(const std::vector<Function>& given, const std::vector<Given>& more = {},
                                     const OwnGroup& own = {}) const {
    return functions(data->variableSpace(), given, more, own);
  }
  std::vector<double> sides(int quantity) const {
    return LinConDomain(*data, Event::none).get(quantity).as<double>().getAll();
  }

  LinConAdder adder{data};
};

TEST_F(LinConAdderTest, SendsARowPerCallAsFunctionSenseAndNegatedConstant) {
  const auto names = values<const char*>({"a", "", "c"});
  const std::vector<Function> block{{0, {0}, {2}, -3}, {1, {2, 0}, {1, 1}, 4}, {2, {}, {}, -1}};
  EXPECT_THAT(positionsOf(adder.add(rows(block, {{Q::name, names}}, {{"lazy", onlyAt(1, 2, 3)}}))),
              ElementsAre(0, 1, 2));
  EXPECT_THAT(gurobi->takeCalls(), ElementsAre(kReadCount, R"(GRBaddconstr(m1, 1, [0], [2], 'G', 3, "a"))",
                                               R"(GRBaddconstr(m1, 2, [2, 0], [1, 1], 'L', -4, ""))",
                                               testing::MatchesRegex(R"(GRBaddconstr\(m1, 0, .*, 'E', 1, "c"\))"),
                                               R"(GRBsetintattrarray(m1, "Lazy", 0, 3, [0, 2, 0]))"));
  data->options.item(IntOption::names)->set(0, 0);
  EXPECT_THAT(positionsOf(adder.add(rows({{0, {1}, {1}, -5}}, {{Q::name, values<const char*>({"d"})}}))),
              ElementsAre(3));
  EXPECT_THAT(gurobi->takeCalls(),
              ElementsAre("GRBupdatemodel(m1)", kReadCount, R"(GRBaddconstr(m1, 1, [1], [1], 'G', 5, ""))"));
}

TEST_F(LinConAdderTest, KeepsSidesAndWhatIsUsedLater) {
  adder.add(rows({{0, {0}, {1}, -2}}));
  adder.add(rows({{1, {0}, {1}, -3}, {2, {0}, {1}, -4}},
                 {{Q::marginal, values<double>({0.5, 1})}, {Q::basis, values<int>({3, 2})}},
                 {{"feaspref", values<double>({7, 8})}}));
  const RowStores& stores = *data->rowStores;
  EXPECT_THAT(sides(Q::lower), ElementsAre(2, -kInf, 4));
  EXPECT_THAT(sides(Q::upper), ElementsAre(kInf, 3, 4));
  EXPECT_THAT(stores.marginal.getAll(), ElementsAre(IsNan(), 0.5, 1));
  EXPECT_THAT(stores.basis.getOptional(tav::idx::lib::Range(0, 3)), ElementsAre(std::nullopt, 3, 2));
  EXPECT_THAT(stores.preference.getAll(), ElementsAre(IsNan(), 7, 8));
}

TEST_F(LinConAdderTest, RefusesWhatItCanCheckBeforeAnyCall) {
  struct Case {
    tav::opt::ConstraintContainer block;
    const char* message;
  };
  const Function sound{0, {0}, {1}, 0};
  std::vector<Given> constants{{Q::function, values<Symbol>({Symbol()})}};
  const Case cases[]{
      {rows({sound, {3, {0}, {1}, 0}}), "Domain type not supported."},
      {rows({sound, {-1, {0}, {1}, 0}}), "Domain type not supported."},
      {functions(data->variableSpace() + 1, {sound}), "Input not supported"},
      {rows({sound}, constants), "Input not supported"},
      {rows({sound, {0, {0, 3}, {1, 1}, 0}}), "Element 1 of the block: there is no variable 3."},
      {rows({{0, {-1}, {1}, 0}}), "Element 0 of the block: there is no variable -1."},
      {rows({{0, {2}, {kNaN}, 0}}), "Element 0 of the block: the coefficient nan of variable 2 is not finite."},
      {rows({{0, {2}, {-kInf}, 0}}), "Element 0 of the block: the coefficient -inf of variable 2 is not finite."},
      {rows({{0, {2}, {1}, kInf}}), "Element 0 of the block: the constant inf is not finite."},
      {rows({sound}, {}, {{"lazy", values<int>({1, 1})}}),
       "'lazy' (which is 2) must be equal to 'count' (which is 1)."},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(messageOf([&] { adder.add(c.block); }), c.message);
    EXPECT_THAT(gurobi->calls(), IsEmpty()) << c.message;
  }
  EXPECT_EQ(adder.add(rows({})).size(), 0);
  EXPECT_THAT(gurobi->calls(), IsEmpty());
}

// Rows are read in portions; the borders between them must not show.
TEST_F(LinConAdderTest, SendsBlocksOfAnySizeRowByRow) {
  std::vector<Function> block;
  for (int i = 0; i < 600; ++i) block.push_back({0, {i % 3}, {1.0 + i}, -2});
  EXPECT_EQ(adder.add(rows(block)).size(), 600);
  const auto calls = gurobi->takeCalls();
  ASSERT_EQ(calls.size(), 601u);
  for (const int i : {0, 255, 256, 511, 512, 599}) {
    EXPECT_EQ(calls[static_cast<std::size_t>(i) + 1],
              fmt::format(R"(GRBaddconstr(m1, 1, [{}], [{}], 'G', 2, ""))", i % 3, i + 1));
  }
  block.back().positions = {3};
  EXPECT_EQ(messageOf([&] { adder.add(rows(block)); }), "Element 599 of the block: there is no variable 3.");
}

}  // namespace
}  // namespace grb
