#include <cmath>
#include <limits>
#include <numbers>
#include <set>

#include "tav/math/fn/catalogue.h"
#include "tests/tav/thrown.h"

using tav::CheckException;
namespace fn = tav::math::fn;
using Symbol = tav::math::Symbol<double>;
using Vector = tav::math::Vector<double>;
using Linear = tav::math::LinearFunction<double>;
using Doubles = std::vector<double>;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kTiny = std::numeric_limits<double>::denorm_min();

namespace {

Symbol vectorOf(Doubles values) { return Symbol::ofVector(std::make_shared<const Vector>(std::move(values))); }

// Equal up to the rounding of a few operations; NaN equals NaN.
void expectClose(double actual, double expected) {
  if (std::isnan(expected) || std::isinf(expected) || expected == 0) {
    EXPECT_TRUE(std::isnan(expected) ? std::isnan(actual) : actual == expected) << actual << " for " << expected;
  } else {
    EXPECT_NEAR(actual, expected, 1e-15 * std::fabs(expected) + kTiny);
  }
}

struct ValueCase {
  const char* identifier;
  Doubles arguments;
  double expected;
};
const ValueCase kValues[] = {
    {"basic:Add", {1.5, 2, -0.5}, 3},
    {"basic:Subtract", {1, 3}, -2},
    {"basic:Multiply", {-2, 3}, -6},
    {"basic:Divide", {1, -4}, -0.25},
    {"basic:Divide", {1, 0}, kInf},
    {"basic:Divide", {0, 0}, kNaN},
    {"basic:Negate", {2}, -2},
    {"basic:Abs", {-2}, 2},
    {"basic:Min", {2, -1, 5}, -1},
    {"basic:Min", {2, kNaN, 5}, kNaN},
    {"basic:Max", {2, -1, 5}, 5},
    {"basic:Max", {kNaN, -1}, kNaN},
    {"exponential:Square", {-3}, 9},
    {"exponential:SquareRoot", {2.25}, 1.5},
    {"exponential:SquareRoot", {-1}, kNaN},
    {"exponential:Power", {2, 10}, 1024},
    {"exponential:Power", {-8, 3}, -512},
    {"exponential:Power", {-8, 1.0 / 3}, kNaN},
    {"exponential:Power", {0, -1}, kInf},
    {"exponential:Power0", {0, 0}, 1},
    {"exponential:PowerConst", {-2, 3}, -8},
    {"exponential:SignPower", {-4, 0.5}, -2},
    {"exponential:SignPower", {4, 2}, 16},
    {"exponential:SignPower", {0, 2}, 0},
    {"exponential:SignPower", {0, 0}, 0},
    {"exponential:SignPower", {0, -1}, kNaN},
    {"exponential:Exp", {1}, std::numbers::e},
    {"exponential:Exp", {-1000}, 0},
    {"exponential:Log", {0}, -kInf},
    {"exponential:Log", {-1}, kNaN},
    {"exponential:Log", {10}, std::numbers::ln10},
    {"exponential:Log2", {8}, 3},
    {"exponential:Log10", {1000}, 3},
    {"exponential:LogBase", {6, 4}, std::log(6) / std::log(4)},
    {"exponential:LogBase", {0, 3}, -kInf},
    {"exponential:LogBase", {0, 0.5}, kInf},
    {"exponential:LogBase", {kInf, 3}, kInf},
    {"exponential:LogBase", {-5, 3}, kNaN},
    {"exponential:LogBase", {5, 1}, kNaN},
    {"exponential:LogBase", {5, -2}, kNaN},
    {"exponential:Sigmoid", {0}, 0.5},
    {"exponential:Sigmoid", {800}, 1},
    {"exponential:Sigmoid", {-700}, std::exp(-700.0)},
    {"exponential:Sigmoid", {-kInf}, 0},
    {"exponential:Polynomial", {2, 3, 0, -1}, 11},
    {"exponential:Polynomial", {kInf, 0, -1, 4}, -kInf},
    {"exponential:Polynomial", {2, 5}, 5},
    {"trigonometric:Sin", {1.5707963267948966}, 1},
    {"trigonometric:Cos", {0}, 1},
    {"trigonometric:Tan", {0.7853981633974483}, 1},
    {"trigonometric:tanh", {-1000}, -1},
    {"norm:Norm1", {3, -4}, 7},
    {"norm:Norm2", {3, -4}, 5},
    {"norm:Norm2", {3e200, -4e200}, 5e200},
    {"norm:Norm2", {3e-200, 4e-200}, 5e-200},
    {"norm:Norm2", {kTiny, 0}, kTiny},
    {"norm:Norm2", {0, 0}, 0},
    {"norm:Norm2", {-kInf, 1}, kInf},
    {"norm:Norm2", {1, kNaN}, kNaN},
    {"norm:NormInf", {3, -4}, 4},
    {"norm:NormInf", {kNaN, -4}, kNaN},
    {"logic:BoolAnd", {1, 0.999999, 1}, 1},
    {"logic:BoolAnd", {1, 1e-9}, 0},
    {"logic:BoolOr", {0, 1e-9}, 0},
    {"logic:BoolOr", {0, 1}, 1},
    {"logic:BoolOr", {kNaN, 1}, kNaN},
    {"linear", {1, 2, 3}, 6},
};

}  // namespace

TEST(CatalogueTest, FindsEachFunctionByItsExactIdentifierOnly) {
  std::set<std::string_view> identifiers;
  for (const auto* function : fn::catalogue()) {
    EXPECT_EQ(fn::find(function->identifier()), function);
    identifiers.insert(function->identifier());
  }
  EXPECT_EQ(identifiers.size(), 32U);
  EXPECT_TRUE(fn::find("tav:function:trigonometric:tanh"));
  for (const char* unknown : {"tav:function:trigonometric:TanH", "tav:function:trigonometric:Tanh", "Add", "",
                              "tav:function:basic:add", "tav:function:basic:Add "}) {
    EXPECT_FALSE(fn::find(unknown)) << unknown;
  }
}

TEST(CatalogueTest, TellsHowManyArgumentsACallMayHave) {
  struct Case {
    const char* identifier;
    int least;
    int most;
  };
  for (const Case& c : {Case{"tav:function:basic:Add", 1, 99}, Case{"tav:function:basic:Subtract", 2, 2},
                        Case{"tav:function:basic:Negate", 1, 1}, Case{"tav:function:exponential:PowerConst", 2, 2},
                        Case{"tav:function:norm:Norm2", 1, 1}, Case{"tav:function:structural:Vectorize", 1, 99},
                        Case{"tav:function:linear", 3, 3}}) {
    const auto* function = fn::find(c.identifier);
    ASSERT_TRUE(function) << c.identifier;
    EXPECT_TRUE(function->takes(c.least) && function->takes(c.most)) << c.identifier;
    EXPECT_FALSE(function->takes(c.least - 1)) << c.identifier;
    EXPECT_EQ(function->takes(c.most + 1), c.most == 99) << c.identifier;
  }
}

TEST(FunctionTest, ValuesAndEdges) {
  std::set<const void*> covered;
  for (const ValueCase& c : kValues) {
    SCOPED_TRACE(c.identifier);
    const auto* function = fn::find(std::string("tav:function:") + c.identifier);
    ASSERT_TRUE(function);
    covered.insert(function);
    expectClose(function->value(c.arguments), c.expected);
  }
  EXPECT_EQ(covered.size() + 1, fn::catalogue().size()) << "every function but Vectorize";
}

TEST(FunctionTest, WholeLogarithmsAreExact) {
  for (const double base : {0.1, 0.3, 1.1, 2.0, 3.0, 5.0, 6.0, 10.0, 100.0}) {
    for (int power = -20; power <= 20; ++power) {
      EXPECT_EQ(fn::the<fn::LogBase>().value(Doubles{std::pow(base, power), base}), power) << base;
    }
  }
}

TEST(FunctionTest, EvaluatesSymbols) {
  const auto constant = [](double value) { return Symbol::ofConstant(value); };
  const std::vector<Symbol> three = {constant(1.5), constant(2), constant(-0.5)};
  EXPECT_EQ(fn::the<fn::Add>().evaluate(three).asConstant(), 3);
  const std::vector<Symbol> norm = {fn::the<fn::Vectorize>().evaluate(three)};
  EXPECT_EQ(fn::the<fn::Norm1>().evaluate(norm).asConstant(), 4);
  const std::vector<Symbol> polynomial = {constant(2), vectorOf({1, 0, -3})};
  EXPECT_EQ(fn::the<fn::Polynomial>().evaluate(polynomial).asConstant(), 1);
  const Symbol function = Symbol::ofLinear(Linear::owning(1, {4, 7}, {2, -1}, 10));
  const std::vector<Symbol> linear = {function, vectorOf({3, 5}), constant(0.5)};
  EXPECT_EQ(fn::the<fn::Linear>().evaluate(linear).asConstant(), 11.5);
  const std::vector<Symbol> short2 = {function, vectorOf({3}), constant(0.5)};
  EXPECT_THROW(fn::the<fn::Linear>().evaluate(short2), CheckException);
  const std::vector<Symbol> variable = {Symbol::ofVariable(1, 0)};
  EXPECT_THROW(fn::the<fn::Sin>().evaluate(variable), CheckException);
  EXPECT_THROW(fn::the<fn::Sin>().evaluate(three), CheckException);
  EXPECT_THROW(fn::the<fn::Subtract>().evaluate(variable), CheckException);
}

TEST(FunctionTest, AFunctionOutsideTheCatalogue) {
  const fn::General arc("host:atan", 1, [](std::span<const double> x) { return std::atan(x[0]); });
  EXPECT_FALSE(fn::find(arc.identifier()));
  tav::math::Expression<double> e;
  e.addConstant(0);
  e.addCall(arc, 1);
  EXPECT_EQ(e.whole().root().asCall().function->identifier(), "host:atan");
  EXPECT_THROW(e.addCall(arc, 2), CheckException);
}
