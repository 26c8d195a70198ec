#include "grb/nonlinear/nonlinear_stack.h"

#include <gmock/gmock.h>

#include <array>
#include <cmath>
#include <random>

#include "grb/adder/var_adder.h"
#include "grb/gurobi/constants.h"
#include "grb/nonlinear/operators.h"
#include "tav/math/evaluator.h"
#include "tav/math/fn/catalogue.h"
#include "tests/grb/blocks.h"
#include "tests/grb/expressions.h"
#include "tests/tav/thrown.h"

namespace grb {
namespace {

namespace fn = tav::math::fn;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Symbol = tav::math::Symbol<double>;

constexpr int kVariables = 5;

class NonlinearStackTest : public testing::Test, protected OpenRecord {
 protected:
  NonlinearStackTest() {
    VarAdder(data).add(plainVariables(kVariables));
    data->model->updateIfPending();
    gurobi->takeCalls();
  }
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

// --- What is sent means the same as the expression ---

class Generator {
 public:
  Generator(unsigned seed, std::uint64_t space) : random_(seed), space_(space) {}

  std::shared_ptr<tav::math::Expression<double>> make() {
    target_ = std::make_shared<tav::math::Expression<double>>();
    term(6);
    return target_;
  }

 private:
  static constexpr std::array kUnary{"basic:Negate",      "exponential:Square",  "exponential:SquareRoot",
                                     "exponential:Exp",   "exponential:Log",     "exponential:Log2",
                                     "exponential:Log10", "exponential:Sigmoid", "trigonometric:Sin",
                                     "trigonometric:Cos", "trigonometric:Tan",   "trigonometric:tanh"};
  static constexpr std::array kBinary{"basic:Subtract", "basic:Multiply", "basic:Divide"};
  static constexpr std::array kPowers{"exponential:Power", "exponential:Power0", "exponential:PowerConst",
                                      "exponential:SignPower"};

  int upTo(int n) { return std::uniform_int_distribution(0, n)(random_); }
  double value() { return std::uniform_real_distribution(-2.0, 2.0)(random_); }

  template <class Names>
  void callAnyOf(const Names& names, int arguments) {
    const auto name = names[static_cast<std::size_t>(upTo(static_cast<int>(names.size()) - 1))];
    target_->addCall(*fn::find(std::string("tav:function:") + name), arguments);
  }

  void leaf() {
    if (upTo(3) == 0) return target_->addConstant(value());
    if (upTo(3) > 0) return target_->addVariable(space_, upTo(kVariables - 1));
    target_->addLinearCall(tav::math::LinearFunction<double>::owning(
        space_, {upTo(kVariables - 1), upTo(kVariables - 1)}, {value(), value()}, value()));
  }

  // Of a base that is positive and finite: no other base has the same power through a logarithm.
  void power() {
    leaf();
    target_->addCall(fn::the<fn::Exp>(), 1);
    target_->addConstant(upTo(1) == 0 ? 1 + upTo(2) : std::exp(value()) + 1);
    callAnyOf(kPowers, 2);
  }

  void term(int depth) {
    const int kind = depth == 0 ? 0 : upTo(6);
    if (kind == 0) return leaf();
    if (kind == 1) return power();
    const int arguments = kind < 4 ? 1 : kind < 6 ? 2 : 1 + upTo(4);
    for (int k = 0; k < arguments; ++k) term(depth - 1);
    if (kind == 6) return target_->addCall(fn::the<fn::Add>(), arguments);
    arguments == 1 ? callAnyOf(kUnary, 1) : callAnyOf(kBinary, 2);
  }

  std::mt19937 random_;
  std::uint64_t space_;
  std::shared_ptr<tav::math::Expression<double>> target_;
};

double operated(int code, const std::vector<double>& operands) {
  for (const auto& [identifier, opcode] : opcodeTable()) {
    if (opcode == code) return fn::find(identifier)->value(operands);
  }
  ADD_FAILURE() << "no operator: " << code;
  return 0;
}

// The value of a tree given as Gurobi takes it. Also sees to the order: a node's parent is open when it comes.
double valueOf(const NonlinearStack& tree, const std::vector<double>& point) {
  const int n = static_cast<int>(tree.opcodes().size());
  std::vector<std::vector<double>> operands(static_cast<std::size_t>(n));
  std::vector<int> open;
  for (int i = 0; i < n; ++i) {
    const int parent = tree.parents()[static_cast<std::size_t>(i)];
    while (!open.empty() && open.back() != parent) open.pop_back();
    EXPECT_EQ(open.empty(), i == 0) << "node " << i << " is not in depth-first order";
    open.push_back(i);
  }
  for (auto i = static_cast<std::size_t>(n); i-- > 0;) {
    const int code = tree.opcodes()[i];
    const double data = tree.data()[i];
    std::reverse(operands[i].begin(), operands[i].end());
    const double value = code == opcode::kConstant   ? data
                         : code == opcode::kVariable ? point.at(static_cast<std::size_t>(data))
                                                     : operated(code, operands[i]);
    if (i == 0) return value;
    operands[static_cast<std::size_t>(tree.parents()[i])].push_back(value);
  }
  return 0;
}

TEST_F(NonlinearStackTest, RandomExpressionsKeepTheirValue) {
  const std::vector<double> point{0.5, -1.25, 2, 0.1, -0.7};
  tav::math::Evaluator evaluate;
  int comparable = 0;
  for (unsigned seed = 1; seed <= 400; ++seed) {
    const auto given = Generator(seed, data->variableSpace()).make();
    std::vector<double> extended(static_cast<std::size_t>(data->variables.count()));
    std::copy(point.begin(), point.end(), extended.begin());
    // Auxiliary variables come in the order of the linear functions.
    for (std::size_t i = 0; i + 3 < given->size(); ++i) {
      const Symbol function = given->at(i);
      if (!function.is(tav::math::SymbolKind::kLinear)) continue;
      extended.push_back(tav::math::evaluate(function.asLinear(), point) + given->at(i + 2).asConstant());
    }
    const auto tree = NonlinearStack::load(Symbol::ofView(given->whole()), data.get());
    ASSERT_EQ(extended.size(), static_cast<std::size_t>(data->variables.count())) << "seed " << seed;
    const double expected = evaluate(given->whole(), point);
    const double value = valueOf(tree, extended);
    EXPECT_EQ(std::isfinite(value), std::isfinite(expected)) << "seed " << seed;
    if (!std::isfinite(expected)) continue;
    EXPECT_NEAR(value, expected, 1e-9 * std::max(1.0, std::fabs(expected))) << "seed " << seed;
    ++comparable;
  }
  EXPECT_GT(comparable, 200);
}

}  // namespace
}  // namespace grb
