#include "grb/adder/var_adder.h"

#include <gmock/gmock.h>

#include "tests/grb/blocks.h"
#include "tests/tav/thrown.h"

namespace grb {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNan;
using Q = tav::opt::VariableQuantity;

class VarAdderTest : public testing::Test, protected OpenRecord {
 protected:
  VarAdder adder{data};
};

TEST_F(VarAdderTest, SendsABlockInOneCallBehindOneReadOfTheCount) {
  EXPECT_THAT(positionsOf(adder.add(variables({0, 1, 2, 3}, {{-1, 0, 2, 3}, {1, 1e100, 4, 5}}))),
              ElementsAre(0, 1, 2, 3));
  EXPECT_THAT(gurobi->takeCalls(),
              ElementsAre(kReadCount,
                          "GRBaddvars(m1, 4, 0, null, null, null, null, [-1, 0, 2, 3], [1, 1e+100, 4, 5], "
                          "['C', 'I', 'S', 'N'], null)"));
  const auto second = adder.add(plainVariables(2));
  EXPECT_THAT(positionsOf(second), ElementsAre(4, 5));
  EXPECT_EQ(second.kind(), tav::idx::Kind::kContiguous);
  EXPECT_THAT(gurobi->takeCalls(),
              ElementsAre("GRBupdatemodel(m1)", kReadCount,
                          "GRBaddvars(m1, 2, 0, null, null, null, null, [0, 0], [1, 1], ['C', 'C'], null)"));
}

TEST_F(VarAdderTest, SendsPartitionsOfAtLeastMinusOneAndNamesOneByOne) {
  const auto withNames = [](const OwnGroup& own) {
    return variables({0, 0, 0}, {{0, 0, 0}, {1, 1, 1}}, {{Q::name, values<const char*>({"a", "", "b"})}}, own);
  };
  adder.add(withNames({{"partition", values<int>({-5, 0, 3})}}));
  const auto calls = gurobi->takeCalls();
  EXPECT_THAT(
      Calls(calls.begin() + 2, calls.end()),
      ElementsAre(R"(GRBsetintattrarray(m1, "Partition", 0, 3, [-1, 0, 3]))",
                  R"(GRBsetstrattrelement(m1, "VarName", 0, "a"))", R"(GRBsetstrattrelement(m1, "VarName", 2, "b"))"));
  data->options.item(IntOption::names)->set(0, 0);
  adder.add(withNames({{"partition", onlyAt(1, 7, 3)}}));
  EXPECT_EQ(gurobi->calls().back(), R"(GRBsetintattrarray(m1, "Partition", 3, 3, [-1, 7, -1]))");
  EXPECT_EQ(gurobi->count(Fn::GRBsetstrattrelement), 0);
}

TEST_F(VarAdderTest, KeepsWhatIsUsedLaterAtTheNewPositions) {
  adder.add(plainVariables(2));
  adder.add(variables({0, 1}, {{0, 0}, {1, 1}}, {{Q::level, values<double>({0.5, 1})}, {Q::basis, values<int>({1, 3})}},
                      {{"feaspref", values<double>({2, 3})}, {"priority", onlyAt(1, 9.0, 2)}}));
  const VariableStores& stores = data->variableStores;
  EXPECT_THAT(stores.level.getAll(), ElementsAre(IsNan(), IsNan(), 0.5, 1));
  EXPECT_THAT(stores.preference.getAll(), ElementsAre(IsNan(), IsNan(), 2, 3));
  EXPECT_THAT(stores.priority.getAll(), ElementsAre(IsNan(), IsNan(), IsNan(), 9));
  EXPECT_THAT(stores.basis.getOptional(tav::idx::lib::Range(0, 4)), ElementsAre(std::nullopt, std::nullopt, 1, 3));
  EXPECT_EQ(stores.priority.itemCount(), 1);
}

TEST_F(VarAdderTest, RefusesWhatItCanCheckBeforeAnyCall) {
  struct Case {
    tav::opt::VariableContainer block;
    const char* message;
  };
  const std::vector<Given> shortNames{{Q::name, values<const char*>({"a"})}};
  const Case cases[]{
      {variables({0, 4}, {{0, 0}, {1, 1}}), "Domain type not supported."},
      {variables({-1, 0}, {{0, 0}, {1, 1}}), "Domain type not supported."},
      {variables({256, 0}, {{0, 0}, {1, 1}}), "Domain type not supported."},
      {variables({0, 0}, {{0, kNaN}, {1, 1}}), "A bound of variable 1 of the block is not a number."},
      {variables({0, 0}, {{0, 0}, {kNaN, 1}}), "A bound of variable 0 of the block is not a number."},
      {variables({0, 0}, {{0, 0}, {1}}), "'2' (which is 1) must be equal to 'count' (which is 2)."},
      {variables({0, 0}, {{0, 0}, {1, 1}}, shortNames), "'4' (which is 1) must be equal to 'count' (which is 2)."},
      {variables({0}, {{0}, {1}}, {}, {{"partition", values<int>({1, 2})}}),
       "'partition' (which is 2) must be equal to 'count' (which is 1)."},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(messageOf([&] { adder.add(c.block); }), c.message);
    EXPECT_THAT(gurobi->calls(), IsEmpty()) << c.message;
  }
  EXPECT_EQ(data->variables.count(), 0);
}

TEST_F(VarAdderTest, SendsNothingForAnEmptyBlock) {
  const std::lock_guard held(data->modelLock);  // would not return if it wanted the lock
  EXPECT_EQ(adder.add(plainVariables(0)).size(), 0);
  EXPECT_EQ(adder.add(tav::opt::VariableContainer()).size(), 0);
  EXPECT_THAT(gurobi->calls(), IsEmpty());
}

TEST_F(VarAdderTest, IsInactiveWithoutAnOpenModel) {
  const auto expectInactive = [](VarAdder& inactive) {
    EXPECT_FALSE(inactive.isActive());
    const auto error = thrown<tav::opt::SupportException>([&] { inactive.add(plainVariables(1)); });
    EXPECT_EQ(error.message(), "Adder inactive");
    EXPECT_EQ(error.location().file(), "grb/adder");
    EXPECT_THAT(error.location().function(),
                testing::HasSubstr("grb::VarAdder::add(const tav::opt::VariableContainer&)"));
  };
  const auto unopened = std::make_shared<Data>(gurobi->library());
  VarAdder early{unopened};
  EXPECT_EQ(early.variableSpace(), unopened->variableSpace());
  expectInactive(early);
  EXPECT_TRUE(adder.isActive());
  EXPECT_EQ(adder.variableSpace(), data->variableSpace());
  EXPECT_NE(adder.variableSpace(), early.variableSpace());
  data.reset();
  EXPECT_EQ(adder.variableSpace(), 0u);
  expectInactive(adder);
}

TEST_F(VarAdderTest, StopsWhenTheModelHoldsOtherVariablesThanWereAdded) {
  adder.add(plainVariables(1));
  data->model->addVar({}, {}, 0, 0, 1, 'C', nullptr);
  EXPECT_EQ(messageOf([&] { adder.add(plainVariables(1)); }),
            "The Gurobi model holds 2 variables where 1 were added; the model cannot be loaded further.");
  EXPECT_EQ(gurobi->count(Fn::GRBaddvars), 1);
}

TEST_F(VarAdderTest, GoesOnAfterAFailureThatLostNothing) {
  adder.add(plainVariables(1));
  gurobi->failCall(Fn::GRBaddvars, 10001, "Out of memory");
  EXPECT_EQ(messageOf<GurobiException>([&] { adder.add(plainVariables(1)); }), "Out of memory");
  EXPECT_THAT(positionsOf(adder.add(plainVariables(2))), ElementsAre(1, 2));
}

}  // namespace
}  // namespace grb
