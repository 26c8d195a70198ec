#include "grb/nonlinear/nonlinear_stack.h"

#include <gmock/gmock.h>

#include "tav/math/fn/catalogue.h"
#include "tests/grb/blocks.h"
#include "tests/tav/expressions.h"
#include "tests/tav/thrown.h"

namespace grb {
namespace {

namespace fn = tav::math::fn;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr int kVariables = 5;

class NonlinearStackTest : public testing::Test, protected OpenRecord {
 protected:
  NonlinearStackTest() : OpenRecord(kVariables) {}
  NonlinearStack load(std::string_view text) {
    return NonlinearStack::load(symbol(data->variableSpace(), text), data.get());
  }
};

TEST_F(NonlinearStackTest, ListsEachNodeBeforeItsArgumentsAndTheseInTheirOrder) {
  const struct Case {
    const char* text;
    std::vector<int> opcodes, parents;
    std::vector<double> data;
  } cases[]{
      {"2.5", {0}, {-1}, {2.5}},
      {"x4", {1}, {-1}, {4}},
      {"Sin(x3)", {9, 1}, {-1, 0}, {-1, 3}},
      {"Multiply(Subtract(x0, 5), Exp(x1))", {4, 3, 1, 0, 13, 1}, {-1, 0, 1, 1, 0, 4}, {-1, -1, 0, 5, -1, 1}},
      {"Divide(Sin(x0), Cos(Tan(x1)))", {5, 9, 1, 10, 11, 1}, {-1, 0, 1, 0, 3, 4}, {-1, -1, 0, -1, -1, 1}},
      {"Add(x0, Negate(Square(x1)), 7, SquareRoot(x2))",
       {2, 1, 6, 7, 1, 0, 8, 1},
       {-1, 0, 0, 2, 3, 0, 0, 6},
       {-1, 0, -1, -1, 1, 7, -1, 2}},
      {"Power(x0, 2)", {12, 1, 0}, {-1, 0, 0}, {-1, 0, 2}},
      {"Power0(2, x0)", {12, 0, 1}, {-1, 0, 0}, {-1, 2, 0}},
      {"Multiply(Power(x0, Add(1, 1)), Sin(x1))",
       {4, 12, 1, 2, 0, 0, 9, 1},
       {-1, 0, 1, 1, 3, 3, 0, 6},
       {-1, -1, 0, -1, 1, 1, -1, 1}},
      {"SignPower(x0, 1.5)", {19, 1, 0}, {-1, 0, 0}, {-1, 0, 1.5}},
      {"tanh(Sigmoid(Log10(Log2(Log(x0)))))", {18, 17, 16, 15, 14, 1}, {-1, 0, 1, 2, 3, 4}, {-1, -1, -1, -1, -1, 0}},
      // exp(exponent * log(base)) for a whole exponent that is not negative, a power for any other
      {"PowerConst(x1, 3)", {13, 4, 14, 1, 0}, {-1, 0, 1, 2, 1}, {-1, -1, -1, 1, 3}},
      {"PowerConst(Sin(x1), 0)", {13, 4, 14, 9, 1, 0}, {-1, 0, 1, 2, 3, 1}, {-1, -1, -1, -1, 1, 0}},
      {"PowerConst(x1, 2.5)", {12, 1, 0}, {-1, 0, 0}, {-1, 1, 2.5}},
      {"PowerConst(x1, -2)", {12, 1, 0}, {-1, 0, 0}, {-1, 1, -2}},
      {"PowerConst(2, x1)", {12, 0, 1}, {-1, 0, 0}, {-1, 2, 1}},
  };
  for (const Case& c : cases) {
    const NonlinearStack stack = load(c.text);
    EXPECT_EQ(stack.opcodes(), c.opcodes) << c.text;
    EXPECT_EQ(stack.parents(), c.parents) << c.text;
    EXPECT_EQ(stack.data(), c.data) << c.text;
  }
  EXPECT_THAT(gurobi->calls(), IsEmpty());
}

TEST_F(NonlinearStackTest, PutsLinearFunctionsIntoRowsOfTheirOwn) {
  const NonlinearStack stack = load("Add(Sin(lin(2 x0 -1 x3 5)), Exp(lin(1 x1)))");
  EXPECT_THAT(stack.opcodes(), ElementsAre(2, 9, 1, 13, 1));
  EXPECT_THAT(stack.data(), ElementsAre(-1, -1, kVariables, -1, kVariables + 1));
  EXPECT_THAT(gurobi->takeCalls(), ElementsAre("GRBaddconstr(m1, 2, [0, 3], [2, -1], 'E', -5, null)",
                                               "GRBaddvar(m1, 1, [0], [-1], 0, -1e+100, 1e+100, 'C', null)",
                                               "GRBaddconstr(m1, 1, [1], [1], 'E', 0, null)",
                                               "GRBaddvar(m1, 1, [1], [-1], 0, -1e+100, 1e+100, 'C', null)"));
  EXPECT_EQ(data->variables.count(), kVariables + 2);
  EXPECT_THAT(data->rowStores->senses, ElementsAre('E', 'E'));
  EXPECT_THAT(data->rowStores->sides, ElementsAre(-5, 0));
}

TEST_F(NonlinearStackTest, RefusesBeforeAnythingIsAdded) {
  const struct Case {
    const char* text;
    const char* message;
  } cases[]{
      {"Add(lin(1 x0), Norm2(terms(1 x0)))", "Function not supported: tav:function:norm:Norm2"},
      {"Sin(Max(x0, x1))", "Function not supported: tav:function:basic:Max"},
      {"Sin(y0)", "Input expression contains unsupported variable."},
      {"Add(lin(1 x0), Sin(terms(1 x0)))", "Expression contains unsupported symbol: linear function"},
      {"Sin([1])", "Expression contains unsupported symbol: vector argument"},
      {"linear(terms(1 x0), [], x1)", "Input expression contains unsupported linear function."},
      {"linear(terms(1 x0), [1], 1)", "Input expression contains unsupported linear function."},
      {"linear(Sin(x0), [], 1)", "Input expression contains unsupported linear function."},
      {"lin(1 x5)",
       "A linear function in an expression has a variable that does not exist or a number that is not finite."},
      {"lin(nan x0)",
       "A linear function in an expression has a variable that does not exist or a number that is not finite."},
      {"Sin(x5)", "Expression contains variable 5, which does not exist."},
      {"Sin(nan)", "Expression contains the constant nan, which is not finite."},
      {"Sin(Negate(inf))", "Expression contains the constant inf, which is not finite."},
      {"Power(x0, x1)", "A power needs a constant base or a constant exponent."},
      {"Sin(Power0(Sin(x0), Add(1, Cos(x1))))", "A power needs a constant base or a constant exponent."},
      {"SignPower(x0, 0.5)", "A signed power needs a constant exponent of at least 1."},
      {"SignPower(x0, x1)", "A signed power needs a constant exponent of at least 1."},
  };
  for (const Case& c : cases) {
    const tav::Exception error = thrown<tav::opt::SupportException>([&] { load(c.text); });
    EXPECT_EQ(error.message(), c.message) << c.text;
    EXPECT_EQ(error.location().file(), "grb/nonlinear");
    EXPECT_THAT(std::string(error.location().function()), HasSubstr("NonlinearStack::load"));
  }
  EXPECT_EQ(messageOf([&] { NonlinearStack::load(Symbol::ofVariable(data->variableSpace(), 0), data.get()); }),
            "Input must be expression.");
  EXPECT_THAT(gurobi->calls(), IsEmpty());
}

TEST_F(NonlinearStackTest, ReservesRoomOnce) {
  for (const auto& [nodes, room] : {std::pair(5, 25), {22, 26}, {100, 120}}) {
    tav::math::Expression<double> sum;
    for (int i = 1; i < nodes; ++i) sum.addConstant(i);
    sum.addCall(fn::the<fn::Add>(), nodes - 1);
    const auto stack = NonlinearStack::load(Symbol::ofView(sum.whole()), data.get());
    EXPECT_EQ(stack.opcodes().size(), static_cast<std::size_t>(nodes));
    for (const std::size_t capacity :
         {stack.opcodes().capacity(), stack.parents().capacity(), stack.data().capacity()}) {
      EXPECT_EQ(capacity, static_cast<std::size_t>(room));
    }
  }
}

TEST_F(NonlinearStackTest, TakesChainsOfAnyDepthAndViews) {
  constexpr int kDepth = 1000000;
  tav::math::Expression<double> chain;
  chain.addVariable(data->variableSpace(), 1);
  chain.take();  // the chain is a part of an expression that begins before it
  chain.addVariable(data->variableSpace(), 2);
  for (int i = 0; i < kDepth; ++i) chain.addCall(fn::the<fn::Sin>(), 1);
  const auto stack = NonlinearStack::load(Symbol::ofView(chain.take()), data.get());
  ASSERT_EQ(stack.opcodes().size(), kDepth + 1U);
  EXPECT_EQ(stack.parents().back(), kDepth - 1);
  EXPECT_EQ(stack.data().back(), 2);
}

}  // namespace
}  // namespace grb
