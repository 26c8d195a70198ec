#include <gmock/gmock.h>

#include "grb/adder/lin_obj_adder.h"
#include "grb/nonlinear/nonlin_obj_adder.h"
#include "tests/grb/blocks.h"
#include "tests/tav/expressions.h"
#include "tests/tav/thrown.h"

namespace grb {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class NonlinearObjectiveTest : public testing::Test, protected OpenRecord {
 protected:
  NonlinearObjectiveTest() : OpenRecord(4) {}
  tav::opt::ConstraintContainer objectives(int sense, const std::vector<Symbol>& functions) const {
    return expressions(std::vector<int>(functions.size(), sense), functions);
  }
  tav::opt::ConstraintContainer objective(int sense, const char* text) const {
    return objectives(sense, {symbol(data->variableSpace(), text)});
  }

  NonlinObjAdder adder{data};
};

TEST_F(NonlinearObjectiveTest, IsLinearTermsConstantAndAVariableForTheRest) {
  const char* text = "Add(Multiply(3, x2), Sin(lin(1 x0 2)), x0, x2, 7)";
  EXPECT_THAT(positionsOf(adder.add(objective(1, text))), ElementsAre(0));
  EXPECT_THAT(
      gurobi->takeCalls(),
      ElementsAre(kReadCount, "GRBaddconstr(m1, 1, [0], [1], 'E', -2, null)",
                  "GRBaddvar(m1, 1, [0], [-1], 0, -1e+100, 1e+100, 'C', null)",
                  R"(GRBsetintattr(m1, "ModelSense", -1))", R"(GRBsetdblattrlist(m1, "Obj", 2, [0, 2], [1, 4]))",
                  R"(GRBsetdblattr(m1, "ObjCon", 7))", "GRBaddvar(m1, 0, null, null, 1, -1e+100, 1e+100, 'C', null)",
                  "GRBaddgenconstrNL(m1, null, 5, 2, [9, 1], [-1, 4], [-1, 0])"));
  EXPECT_EQ(data->variables.count(), 6);
  EXPECT_EQ(data->generalConstraints.size(), 1U);
  EXPECT_EQ(data->nonlinearRows.count(), 0);
}

TEST_F(NonlinearObjectiveTest, IsTheOnlyOneAndSoundBeforeAnyCall) {
  constexpr const char* kOnlyOne = "Multiple objectives only supported with linear objectives.";
  const auto sine = symbol(data->variableSpace(), "Sin(x0)");
  const struct Case {
    tav::opt::ConstraintContainer block;
    const char* message;
  } cases[]{
      {objectives(0, {sine, sine}), kOnlyOne},
      {objectives(2, {sine}), "Domain type not supported."},
      {objective(0, "Add(lin(1 x0), Sin(lin(1 x0)), Abs(x1))"), "Function not supported: tav:function:basic:Abs"},
      {objective(0, "Add(y0, Sin(x0))"), "Input expression contains unsupported variable."},
      {objectives(0, {Symbol::ofVariable(data->variableSpace() + 1, 0)}), "Input not supported"},
      {objectives(0, {Symbol::ofVector(std::make_shared<tav::math::Vector<double>>())}), "Input not supported"},
      {objectives(0, {Symbol::ofVariable(data->variableSpace(), 4)}),
       "A linear function has a variable that does not exist or a number that is not finite."},
      {objective(0, "Add(1e308, Sin(x0), 1e308)"), "The constants of a function add up to what is not finite."},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(messageOf([&] { adder.add(c.block); }), c.message);
    EXPECT_THAT(gurobi->calls(), IsEmpty()) << c.message;
  }
  adder.add(objectives(0, {sine}));
  EXPECT_EQ(messageOf([&] { adder.add(objectives(0, {sine})); }), kOnlyOne);
  EXPECT_EQ(messageOf([&] { LinObjAdder(data).add(functions(data->variableSpace(), {{0, {0}, {1}}})); }), kOnlyOne);
}

TEST_F(NonlinearObjectiveTest, IsNotThereWhenACallFails) {
  for (int nth = 1; nth <= 8; ++nth) {
    data->model->clear();
    data->clear();
    load(4);
    gurobi->failAnyCall(nth, 10003, "refused");
    const auto add = [&] { adder.add(objective(0, "Add(x1, Sin(lin(1 x0 2)))")); };
    const bool isUnchecked = nth == 5;  // attribute lists go unchecked
    if (isUnchecked) {
      EXPECT_NO_THROW(add());
    } else {
      EXPECT_EQ(messageOf<GurobiException>(add), "refused") << nth;
    }
    ASSERT_FALSE(gurobi->failurePending()) << nth;
    EXPECT_EQ(data->nonlinearObjectives.count(), isUnchecked ? 1 : 0) << nth;
  }
}

}  // namespace
}  // namespace grb
