// Random expressions over all operators at random points: the graph computes what the host's nodes say, its bounds hold
// the values, and what nodes are split into and emitted as has the same value.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>

#include "brel/expr/emit.h"
#include "brel/expr/evaluate.h"
#include "brel/expr/polynomial.h"
#include "tav/math/evaluator.h"
#include "tav/opt/support_exception.h"
#include "tests/expr/expressions.h"

namespace expr_test {
namespace {

using brel::expr::Degree;
using brel::expr::NodeId;
using brel::expr::Op;
using brel::expr::Parts;

const std::vector<Model::Column> kColumns{
    {-4, 4}, {-1e20, 1e20}, {-2, 6, KAVO_INTEGER}, {0, 1, KAVO_BINARY}, {0, 1, KAVO_BINARY}, {1, 3}, {0, 1e20}};

/// Three kinds of operands. Exact: multiples of 1/8 that stay small, so that rounding and comparisons of what is equal
/// by algebra do not depend on the order of operations. Smooth: any number. Truth.
class Generator {
 public:
  explicit Generator(unsigned seed) : random_(seed) {}

  std::string exact(int depth) {
    if (depth == 0) return leaf();
    const std::string a = exact(depth - 1);
    const Kind kinds[]{
        [&] { return call("plus", a, exact(depth - 1)); },
        [&] { return call("minus", a, exact(depth - 1)); },
        [&] { return call("times", leaf(), leaf()); },
        [&] { return call("negate", a); },
        [&] { return call("sum", a, exact(depth - 1), leaf(), number()); },
        [&] { return call(pick({"min", "max"}), a, exact(depth - 1), leaf()); },
        [&] { return call(pick({"floor", "ceil", "abs"}), a); },
        [&] { return call(pick({"mod", "div", "less"}), a, leaf()); },
        [&] { return call(pick({"round", "trunc"}), a, "0"); },
        [&] { return call("times", number(), a); },
        [&] { return call(pick({"norm1", "infinity_norm"}), a, exact(depth - 1), leaf()); },
        [&] { return call("if", truth(depth - 1), a, exact(depth - 1)); },
        [&] { return call("count", truth(depth - 1), truth(depth - 1), leaf()); },
        [&] { return call("numberof", leaf(), leaf(), leaf(), a); },
        [&] { return call("piecewise-linear", "1", "-1", "-0.5", "2", "3", a); },
        [&] { return call("piecewise-linear_by_points", "-2", "1", "0", "4", "1", "-0.5", a); },
    };
    return kinds[below(std::size(kinds))]();
  }

  std::string truth(int depth) {
    if (depth == 0) return pick({"x3", "x4", "x2", "0", "1"});
    const std::string a = exact(depth - 1), b = exact(depth - 1), t = truth(depth - 1), u = truth(depth - 1);
    const Kind kinds[]{
        [&] { return call(pick({"<", "<=", "=", ">=", ">", "!="}), a, b); },
        [&] { return call(pick({"<", "<=", "=", ">=", ">", "!="}), leaf(), leaf()); },
        [&] { return call("not", t); },
        [&] { return call(pick({"and", "or", "<==>"}), t, u); },
        [&] { return call(pick({"forall", "exists"}), t, u, truth(depth - 1), a); },
        [&] { return call("==>", t, u, truth(depth - 1)); },
        [&] { return call(pick({"alldiff", "not_alldiff"}), a, b, leaf()); },
        [&] { return call(pick({"<", ">="}), call("times", number(), "x2"), number()); },
        [&] {
          return call(pick({"atleast", "atmost", "exactly", "not_atleast", "not_atmost", "not_exactly"}), "1",
                      call("count", t, u));
        },
    };
    return kinds[below(std::size(kinds))]();
  }

  std::string smooth(int depth) {
    if (depth == 0) return exact(1);
    const std::string a = smooth(depth - 1);
    const Kind kinds[]{
        [&] { return call(pick({"exp", "sin", "cos", "tanh", "atan", "asinh", "sigmoid", "sinh", "cosh", "abs"}), a); },
        [&] { return call(pick({"sqrt", "log", "log2", "log10", "acosh"}), call("plus", "1.25", call("abs", a))); },
        [&] { return call(pick({"asin", "acos", "atanh", "tan"}), call("times", "0.75", call("sin", a))); },
        [&] { return call("logarithm_to_a_base", "x5", pick({"3", "0.5"})); },
        [&] { return call("divide", a, call("plus", "x5", exact(1))); },
        [&] { return call("power", "x5", a); },
        [&] { return call(pick({"power", "power_with_constant_exponent"}), a, pick({"2", "3", "-2", "1", "0", "4"})); },
        [&] { return call("power", call("abs", a), pick({"0.5", "1.5", "-0.25"})); },
        [&] { return call("power_with_constant_base", pick({"2", "0.5"}), a); },
        [&] { return call(pick({"plus", "minus", "times"}), a, smooth(depth - 1)); },
        [&] { return call("signed_power", a, pick({"1", "2", "1.5", "3"})); },
        [&] { return call("polynomial", "1", "-2", "0.5", "3", a); },
        // it jumps where the first operand changes its sign and the second is negative
        [&] { return call("atan2", call("plus", "x5", call("abs", a)), exact(1)); },
        [&] { return call(pick({"norm2", "max", "sum"}), a, smooth(depth - 1), call("square", leaf())); },
    };
    return kinds[below(std::size(kinds))]();
  }

  /// A value of every column within its bounds.
  std::vector<double> point() {
    const auto eighths = [this](int low, unsigned steps) { return low + below(steps * 8 + 1) / 8.0; };
    return {eighths(-4, 8), eighths(-6, 12), below(9) - 2.0, below(2) + 0.0,
            below(2) + 0.0, eighths(1, 2),   eighths(0, 5)};
  }

 private:
  using Kind = std::function<std::string()>;

  unsigned below(std::size_t count) { return static_cast<unsigned>(random_() % count); }
  std::string pick(const std::vector<const char*>& of) { return of[below(of.size())]; }
  std::string number() { return pick({"2", "-1", "0.5", "3", "-0.25", "0", "1"}); }
  std::string leaf() { return pick({"x0", "x1", "x2", "x3", "x4", "x5", "x6", "x0", "x2", "1", "-2.5"}); }
  template <class... Operand>
  std::string call(const std::string& op, const Operand&... operands) {
    std::string result = "(";
    result += op;
    ((result += ' ', result += operands), ...);
    result += ')';
    return result;
  }

  std::mt19937 random_;
};

constexpr double kTolerance = 1e-7;  // relative to the largest operand

bool isClose(double a, double b, double scale = 1) {
  return a == b || std::fabs(a - b) <= kTolerance * (scale + std::fabs(a));
}

double at(const std::vector<double>& values, NodeId node) { return values[static_cast<std::size_t>(node)]; }

/// How many comparisons were made: points outside of some function's domain, and those where rounding errors may have
/// grown, say nothing.
struct Counts {
  int refused = 0, tried = 0, compared = 0, split = 0, emitted = 0;
};

class Check {
 public:
  Check(const Model& model, NodeId root, const std::vector<double>& point, Counts& counts)
      : graph_(model.graph), root_(root), point_(point), counts_(counts) {
    brel::expr::evaluate(graph_, point, values_);
  }

  void root(double expected, double largest) {
    ++counts_.tried;
    if (!(largest < 1e6) || !std::isfinite(expected)) return;
    ++counts_.compared;
    const double value = at(values_, root_);
    EXPECT_TRUE(isClose(value, expected, largest)) << value << " instead of " << expected;
    for (NodeId node = 0; node <= root_; ++node) {
      if (!(std::fabs(at(values_, node)) < 1e6)) continue;
      bounds(node);
      parts(node);
      emitted(node);
    }
  }

 private:
  void bounds(NodeId node) const {
    const double value = at(values_, node), error = kTolerance * std::fabs(value) + 1e-9;
    const auto [lower, upper] = graph_.interval(node);
    EXPECT_TRUE(lower - error <= value && value <= upper + error)
        << text(graph_, node) << " is " << value << ", not in [" << lower << ", " << upper << "]";
    EXPECT_TRUE(!graph_.isInteger(node) || value == std::round(value)) << text(graph_, node) << " is " << value;
  }

  void parts(NodeId node) {
    for (const bool withQuadratic : {false, true}) {
      const Parts& parts = splitter_.split(node, withQuadratic);
      const double value = valueOf(parts);
      // Terms that cancel out may be large.
      EXPECT_TRUE(!std::isfinite(value) || isClose(value, at(values_, node), 1e3)) << text(graph_, node) << value;
      for (const auto& [rest, factor] : parts.rest) {
        EXPECT_NE(graph_.op(rest), Op::sum);
        EXPECT_FALSE(withQuadratic && graph_.degree(rest) <= Degree::quadratic) << text(graph_, rest);
      }
      counts_.split += static_cast<int>(parts.quadratic.size());
    }
  }

  double valueOf(const Parts& parts) const {
    const auto x = [&](int column) { return point_[static_cast<std::size_t>(column)]; };
    double sum = parts.constant;
    for (const auto& [column, value] : parts.linear) sum += value * x(column);
    for (const auto& [first, second, value] : parts.quadratic) sum += value * x(first) * x(second);
    for (const auto& [node, factor] : parts.rest) sum += factor * at(values_, node);
    return sum;
  }

  void emitted(NodeId node) {
    tav::math::Expression<double> expression;
    try {
      brel::expr::emit(graph_, node, 7, expression);
    } catch (const tav::opt::SupportException&) {
      return;
    }
    const double value = evaluator_(expression.take(), point_);
    EXPECT_TRUE(isClose(value, at(values_, node), 1)) << text(graph_, node) << " is emitted as " << value;
    counts_.emitted += graph_.children(node).empty() ? 0 : 1;
  }

  const brel::expr::Graph& graph_;
  NodeId root_;
  const std::vector<double>& point_;
  Counts& counts_;
  std::vector<double> values_;
  brel::expr::Splitter splitter_{graph_};
  tav::math::Evaluator evaluator_;
};

TEST(RandomTest, WhatTheGraphMakesOfAnExpressionHasItsValue) {
  constexpr unsigned kExpressions = 3000;
  constexpr int kPoints = 5;
  Counts counts;
  for (unsigned seed = 0; seed < kExpressions && !HasFailure(); ++seed) {
    Generator generator(seed);
    const std::string source = seed % 3 == 0   ? generator.truth(4)
                               : seed % 3 == 1 ? generator.exact(4)
                                               : generator.smooth(4);
    SCOPED_TRACE(source);
    Model model(kColumns);
    const int expression = model.add(source);
    NodeId root = 0;
    try {
      root = seed % 3 == 0 ? model.truth(expression) : model.number(expression);
    } catch (const tav::opt::SupportException&) {  // 0^-2 or the like
      ++counts.refused;
      continue;
    }
    for (int k = 0; k < kPoints; ++k) {
      const std::vector<double> point = generator.point();
      double largest = 0;
      const double expected = model.naive(expression, point, largest);
      Check(model, root, point, counts).root(seed % 3 == 0 && std::fabs(expected) > 0 ? 1 : expected, largest);
    }
  }
  EXPECT_LT(counts.refused, static_cast<int>(kExpressions) / 20);
  EXPECT_GT(counts.compared, counts.tried * 7 / 10);
  EXPECT_GT(counts.split, counts.tried / 10);
  EXPECT_GT(counts.emitted, counts.tried);
}

}  // namespace
}  // namespace expr_test
