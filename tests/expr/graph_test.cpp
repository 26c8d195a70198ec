// The graph itself: bounds, degree, splitting into polynomial parts, emission, comparisons with a tolerance.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cmath>

#include "brel/expr/emit.h"
#include "brel/expr/evaluate.h"
#include "brel/expr/polynomial.h"
#include "tav/math/fn/catalogue.h"
#include "tav/opt/support_exception.h"
#include "tests/expr/expressions.h"
#include "tests/tav/expression_text.h"

namespace expr_test {
namespace {

using brel::expr::Degree;
using brel::expr::Graph;
using brel::expr::Interval;
using brel::expr::NodeId;
using brel::expr::Op;
using brel::expr::Parts;
using brel::expr::Splitter;
using brel::expr::Term;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

NodeId imported(Model& model, const char* expression) {
  const int added = model.add(expression);
  return model.number(added);
}

TEST(GraphTest, BoundsAreTightAndWhole) {
  const std::vector<Model::Column> columns{{-3, 2}, {0, 1e20}, {0, 4, KAVO_INTEGER}, {0.5, 3.2, KAVO_INTEGER}, {1, 4}};
  const struct {
    const char* expression;
    double lower, upper;
    bool isInteger;
  } cases[] = {{"(plus (times -2 x0) 1)", -3, 7, false},
               {"(times x0 x0)", 0, 9, false},
               {"(times x0 x2)", -12, 8, false},
               {"(times x0 x1)", -kInfinity, kInfinity, false},
               {"(times x2 x1)", 0, kInfinity, false},
               {"(divide 4 x4)", 1, 4, false},
               {"(divide x4 x1)", 0, kInfinity, false},
               {"(divide 1 x0)", -kInfinity, kInfinity, false},
               {"(plus x3 (times 3 x2))", 1, 15, true},
               {"(times x3 (times x2 x2))", 0, 48, true},
               {"(power x2 3)", 0, 64, true},
               {"(floor (times 0.5 x0))", -2, 1, true},
               {"(mod x0 x4)", -3, 2, false},
               {"(max x0 (min x4 x1))", 0, 4, false},
               {"(max x2 x3)", 1, 4, true},
               {"(norm1 x0 x2)", 0, 7, false},
               {"(if (<= x0 x1) x0 x4)", -3, 4, false},
               {"(piecewise-linear -1 0 2 2 5 x0)", 0, 4, false},
               {"(sin x1)", -1, 1, false}};
  for (const auto& [expression, lower, upper, isInteger] : cases) {
    Model model(columns);
    const NodeId node = imported(model, expression);
    const Interval bounds = model.graph.interval(node);
    EXPECT_EQ(bounds.lower, lower) << expression;
    EXPECT_EQ(bounds.upper, upper) << expression;
    EXPECT_EQ(model.graph.isInteger(node), isInteger) << expression;
  }
}

TEST(GraphTest, BoundsOfFunctionsAreRoundedOutwardByLittle) {
  Graph graph;
  const NodeId x = graph.variable(0, 0.1, 1.3, false);
  const struct {
    Op op;
    double (*function)(double);
  } cases[] = {{Op::exp, std::exp}, {Op::log, std::log},   {Op::tanh, std::tanh},   {Op::sin, std::sin},
               {Op::tan, std::tan}, {Op::cosh, std::cosh}, {Op::asinh, std::asinh}, {Op::sqrt, std::sqrt}};
  for (const auto& [op, function] : cases) {
    const auto [lower, upper] = graph.interval(graph.call(op, x));
    EXPECT_LT(lower, function(0.1));
    EXPECT_GT(upper, function(1.3));
    EXPECT_NEAR(lower, function(0.1), 1e-14);
    EXPECT_NEAR(upper, function(1.3), 1e-14);
  }
}

TEST(GraphTest, EqualExpressionsAreOneNode) {
  Model model({{0, 4}, {0, 4}});
  const int first = model.add("(exp (plus (times x0 x1) (times 2 x1)))");
  const int second = model.add("(exp (plus (times 2 x1) (times x1 x0)))");
  EXPECT_EQ(model.number(first), model.number(second));
  EXPECT_EQ(model.graph.variable(0, -1, 1, true), model.column(0));
  EXPECT_EQ(model.graph.interval(model.column(0)).upper, 4);
}

/// As "constant + terms | rest", terms by column.
std::string partsText(const Graph& graph, const Parts& parts) {
  std::string result = fmt::format("{:g}", parts.constant);
  for (const auto& [column, value] : parts.linear) result += fmt::format(" {:+g} x{}", value, column);
  for (const auto& [a, b, value] : parts.quadratic) result += fmt::format(" {:+g} x{} x{}", value, a, b);
  for (const auto& [node, factor] : parts.rest) result += fmt::format(" | {:g} {}", factor, text(graph, node));
  return result;
}

TEST(SplitterTest, SumsAndQuadraticTerms) {
  const struct {
    const char* expression;
    const char* quadratic;  // split with quadratic terms
    const char* plain;      // and without
  } cases[] = {
      {"(plus (times 3 x1) (minus x0 4))", "-4 +1 x0 +3 x1", "-4 +1 x0 +3 x1"},
      {"(square (minus (plus x0 (times 2 x1)) 3))", "9 -6 x0 -12 x1 +1 x0 x0 +4 x0 x1 +4 x1 x1",
       "0 | 1 product(x0 + 2*x1 - 3, x0 + 2*x1 - 3)"},
      {"(minus (times x1 (plus x0 1)) (times x0 (minus x1 1)))", "0 +1 x0 +1 x1",
       "0 | 1 product(x1, x0 + 1) | -1 "
       "product(x0, x1 - 1)"},
      {"(plus (times x0 x1) (times 2 (exp x0)))", "0 +1 x0 x1 | 2 exp(x0)", "0 | 1 product(x0, x1) | 2 exp(x0)"},
      {"(times (times x0 x1) x0)", "0 | 1 product(x0, product(x0, x1))", "0 | 1 product(x0, product(x0, x1))"},
  };
  for (const auto& [expression, quadratic, plain] : cases) {
    Model model({{0, 4}, {0, 4}});
    const NodeId node = imported(model, expression);
    Splitter splitter(model.graph);
    EXPECT_EQ(partsText(model.graph, splitter.split(node, true)), quadratic) << expression;
    EXPECT_EQ(partsText(model.graph, splitter.split(node, false)), plain) << expression;
  }
}

TEST(SplitterTest, SharedSumsAreLookedAtOnce) {
  Graph graph;
  std::vector<Term> terms;
  for (int column = 0; column < 20; ++column) terms.push_back({graph.variable(column, 0, 1, false), 1});
  NodeId node = graph.sum(1, terms);
  // Two to the power of 60 paths, by sums that are too long to be joined.
  for (int k = 0; k < 60; ++k) {
    for (Term& term : terms) term.coefficient = k + 2;
    const NodeId other = graph.sum(0, terms);
    node = graph.sum(0, {{{node, 2}, {other, 0.5}, {graph.call(Op::exp, node), 1}}});
  }
  Splitter splitter(graph);
  const Parts& parts = splitter.split(node, false);
  EXPECT_EQ(parts.constant, std::exp2(60));
  ASSERT_EQ(parts.linear.size(), 20u);
  double expected = 1;
  for (int k = 0; k < 60; ++k) expected = 2 * expected + 0.5 * (k + 2);
  EXPECT_NEAR(parts.linear[7].value / expected, 1, 1e-14);
  EXPECT_EQ(parts.rest.size(), 60u);
}

TEST(SplitterTest, LongProductsStayNonlinear) {
  Graph graph;
  const auto sumOf = [&graph](int first, int count) {
    std::vector<Term> terms;
    for (int k = first; k < first + count; ++k) terms.push_back({graph.variable(k, 0, 1, false), 1});
    return graph.sum(0, terms);
  };
  EXPECT_EQ(graph.degree(graph.product(sumOf(0, 30), sumOf(30, 33))), Degree::quadratic);
  EXPECT_EQ(graph.degree(graph.product(sumOf(0, 30), sumOf(30, 34))), Degree::nonlinear);
  EXPECT_EQ(graph.degree(graph.product(sumOf(0, 4), sumOf(30, 1000))), Degree::quadratic);
  EXPECT_EQ(graph.degree(graph.product(sumOf(0, 1), graph.product(sumOf(1, 1), sumOf(2, 1)))), Degree::nonlinear);
}

TEST(EmitTest, WritesCallsThatTheSolverTakes) {
  const std::pair<const char*, const char*> cases[] = {
      {"(plus (minus (times 2 x0) x1) 3)", "Add(Multiply(2, x0), Negate(x1), 3)"},
      {"(minus x0 (times 2 x1))", "Subtract(x0, Multiply(2, x1))"},
      {"(minus 5 x0)", "Subtract(5, x0)"},
      {"(minus x0 5)", "Subtract(x0, 5)"},
      {"(negate (exp x0))", "Negate(Exp(x0))"},
      {"(square x0)", "Square(x0)"},
      {"(times x0 (sin x1))", "Multiply(x0, Sin(x1))"},
      {"(divide 1 x0)", "Divide(1, x0)"},
      {"(power x0 3)", "Power(x0, 3)"},
      {"(power 2 x0)", "Power(2, x0)"},
      {"(power x0 x1)", "Exp(Multiply(x1, Log(x0)))"},
      {"(signed_power x0 1.5)", "SignPower(x0, 1.5)"},
      {"(logarithm_to_a_base x0 2.718281828459045)", "Multiply(1, Log(x0))"},
  };
  for (const auto& [expression, expected] : cases) {
    Model model({{-4, 4}, {-4, 4}});
    tav::math::Expression<double> target;
    brel::expr::emit(model.graph, imported(model, expression), 1, target);
    EXPECT_EQ(expressionText(target.take()), expected) << expression;
  }
}

TEST(EmitTest, RefusesWhatIsToBeRewritten) {
  Model model({{-4, 4}});
  tav::math::Expression<double> target;
  const NodeId node = imported(model, "(exp (abs x0))");
  EXPECT_THROW(brel::expr::emit(model.graph, node, 1, target), tav::opt::SupportException);
}

TEST(EvaluateTest, ToleranceKeepsComplementsApart) {
  Graph graph;
  const NodeId x = graph.variable(0, -1, 1, false), far = graph.variable(9, -1, 1, false);
  const NodeId atMost = graph.call(Op::lessEqual, x), above = graph.logicalNot(atMost);
  const NodeId equal = graph.call(Op::equal, x), below = graph.call(Op::less, x);
  const struct {
    double x, tolerance, atMost, above, equal, below;
  } cases[] = {{0, 0, 1, 0, 1, 0},       {1e-9, 0, 0, 1, 0, 0},     {1e-9, 1e-6, 1, 0, 1, 0},
               {1e-3, 1e-6, 0, 1, 0, 0}, {-1e-9, 1e-6, 1, 0, 1, 0}, {-1e-3, 1e-6, 1, 0, 0, 1}};
  for (const auto& c : cases) {
    std::vector<double> values;
    brel::expr::evaluate(graph, std::vector<double>{c.x}, values, c.tolerance);
    const auto at = [&values](NodeId node) { return values[static_cast<std::size_t>(node)]; };
    EXPECT_EQ(at(atMost), c.atMost) << c.x;
    EXPECT_EQ(at(above), c.above) << c.x;
    EXPECT_EQ(at(equal), c.equal) << c.x;
    EXPECT_EQ(at(below), c.below) << c.x;
    EXPECT_TRUE(std::isnan(at(far)));
  }
}

}  // namespace
}  // namespace expr_test
