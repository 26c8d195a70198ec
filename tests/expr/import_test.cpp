// What becomes of the host's expressions: the nodes, simplified, and what is refused.
#include <gtest/gtest.h>

#include <fstream>

#include "brel/expr/evaluate.h"
#include "tav/opt/support_exception.h"
#include "tests/expr/expressions.h"

namespace expr_test {
namespace {

using brel::expr::Graph;
using brel::expr::NodeId;

struct Case {
  const char* expression;
  const char* expected;
};

// x0, x1 real; x2 whole, 0 to 10; x3, x4 binary; x5 in [1, 5]; x6 semi-continuous, 0 or 2 to 5.
const std::vector<Model::Column> kColumns{
    {-10, 10},           {-1e20, 1e20}, {0, 10, KAVO_INTEGER},      {0, 1, KAVO_BINARY},
    {0, 1, KAVO_BINARY}, {1, 5},        {2, 5, KAVO_SEMICONTINUOUS}};

void check(const std::vector<Case>& cases, const std::vector<const char*>& defined = {}) {
  for (const auto& [expression, expected] : cases) {
    Model model(kColumns);
    for (const char* text : defined) model.define(text);
    const int added = model.add(expression);
    for (int column = 0; column < 7; ++column) model.column(column);
    EXPECT_EQ(text(model.graph, model.number(added)), expected) << expression;
  }
}

TEST(ImportTest, Arithmetic) {
  check({
      {"(plus (times 2 x0) (minus x1 (plus x0 3)))", "x0 + x1 - 3"},
      {"(negate (negate (plus x0 x1)))", "x0 + x1"},
      {"(minus x0 (minus x1 (minus x0 x1)))", "2*x0 - 2*x1"},
      {"(minus x0 x0)", "0"},
      {"(sum x0 1 x1 (times x0 -1) 2)", "x1 + 3"},
      {"(times (plus x0 x1) 3)", "3*x0 + 3*x1"},
      {"(divide (plus (times 49 x0) 7) 49)", "x0 + 0.142857"},
      {"(times (times 2 x0) (negate x1))", "-2*product(x0, x1)"},
      {"(times x1 x0)", "product(x0, x1)"},
      {"(times (minus x1 x0) (minus x1 x0))", "product(x0 - x1, x0 - x1)"},
      {"(square (abs x0))", "product(x0, x0)"},
      {"(power x0 2)", "product(x0, x0)"},
      {"(power x0 1)", "x0"},
      {"(power x0 0)", "1"},
      {"(power x0 (plus 1 2))", "power(x0; 3)"},
      {"(power x0 0.5)", "sqrt(x0)"},
      {"(power x0 -1)", "divide(1, x0)"},
      {"(power_with_constant_exponent (abs x0) 4)", "power(x0; 4)"},
      {"(power 2 x0)", "exponential(x0; 2)"},
      {"(power 1 x0)", "1"},
      {"(power_with_constant_base 2 3)", "8"},
      {"(power x0 x1)", "general power(x0, x1)"},
      {"(signed_power x5 1.5)", "power(x5; 1.5)"},
      {"(signed_power x0 3)", "power(x0; 3)"},
      {"(signed_power x0 2)", "signed power(x0; 2)"},
      {"(polynomial 3 0 -1 2 x0)", "-x0 + 3*power(x0; 3) + 2"},
      {"(polynomial 1 1 (plus x0 1))", "x0 + 2"},
      {"(sqrt (times x0 x0))", "abs(x0)"},
      {"(abs (plus x5 1))", "x5 + 1"},
      {"(abs (minus 0.5 x5))", "x5 - 0.5"},
      {"(minus (abs (minus x1 x0)) (abs (minus x0 x1)))", "0"},
      {"(abs (times -3 x0))", "3*abs(x0)"},
      {"(log10 (times 10 100))", "3"},
      {"(logarithm_to_a_base x0 2)", "log2(x0)"},
      {"(logarithm_to_a_base x0 3)", "logarithm to a base(x0; 3)"},
      {"(less x0 x1)", "max(0, x0 - x1)"},
      {"(infinity_norm x0 0 (abs x0))", "abs(x0)"},
      {"(norm2 x1 0 (abs x0))", "norm2(x0, x1)"},
  });
}

TEST(ImportTest, MinimaAndRounding) {
  check({
      {"(min (min x0 3) (min x1 x0 4))", "min(x0, x1, 3)"},
      {"(max x0 11)", "11"},
      {"(max x0 x5 0.5)", "max(x0, x5)"},
      {"(min x5 6)", "x5"},
      {"(floor (plus x2 (times 2 x3)))", "x2 + 2*x3"},
      {"(floor (divide x5 8))", "0"},
      {"(ceil x0)", "ceil(x0)"},
      {"(trunc x5 0)", "floor(x5)"},
      {"(round x0 2)", "0.01*round(100*x0)"},
      {"(round x0 -1)", "10*round(0.1*x0)"},
      {"(mod x2 1)", "0"},
      {"(div x2 -1)", "-x2"},
      {"(mod -7 3)", "-1"},
      {"(piecewise-linear 1 2 3 4 3 x0)", "piecewise-linear(x0; -1 -1; 2 2; 4 8; 12 32)"},
      {"(piecewise-linear -1 0 1 x0)", "piecewise-linear(x0; -1 1; 0 0; 1 1)"},
      {"(piecewise-linear -1 -4 2 -2 3 x0)", "piecewise-linear(x0; -12 -2; -4 -10; -2 -6; 1 3)"},
      {"(piecewise-linear_by_points 0 0 1 2 1 5 3 5 x0)", "piecewise-linear(x0; 0 0; 1 2; 1 5; 3 5)"},
      {"(piecewise-linear -1 0 1 3)", "3"},
  });
}

TEST(ImportTest, Truth) {
  check({
      {"(<= x0 x1)", "<=(x0 - x1)"},
      {"(>= x0 3)", "<=(-x0 + 3)"},
      {"(> x0 3)", "<(-x0 + 3)"},
      {"(not (<= x0 3))", "<(-x0 + 3)"},
      {"(not (< x0 3))", "<=(-x0 + 3)"},
      {"(!= x1 3)", "not(=(x1 - 3))"},
      {"(= 3 x1)", "=(x1 - 3)"},
      {"(not (not x3))", "x3"},
      {"(not (not x0))", "not(=(x0))"},
      // Decided by bounds.
      {"(<= x0 10)", "1"},
      {"(> x0 10)", "0"},
      {"(= x5 0)", "0"},
      {"(= x5 1)", "<=(x5 - 1)"},
      {"(= x6 0)", "<=(x6)"},
      // A single binary variable.
      {"(= x3 1)", "x3"},
      {"(= x3 0)", "not(x3)"},
      {"(>= x3 0.5)", "x3"},
      {"(< (times 2 x3) 1)", "not(x3)"},
      {"(= x3 0.5)", "0"},
      // Whole terms.
      {"(< x2 3)", "<=(x2 - 2)"},
      {"(< (times 3 x2) 8)", "<=(x2 - 2)"},
      {"(<= (plus (times 4 x2) (times 6 x3)) 7)", "<=(2*x2 + 3*x3 - 3)"},
      {"(> (plus x2 x3) 1.5)", "<=(-x2 - x3 + 2)"},
      {"(= (times 3 x2) 7)", "0"},
      {"(= (minus (times 2 x2) (times 4 x3)) 2)", "=(x2 - 2*x3 - 1)"},
      // Junctions.
      {"(and (and x3 x4) (and x3 1))", "and(x3, x4)"},
      {"(or x3 (or x4 (not x3)))", "1"},
      {"(and (= x1 1) (!= x1 1))", "0"},
      {"(forall x3 (<= x0 3) 0)", "0"},
      {"(exists x3 x0)", "or(x3, not(=(x0)))"},
      {"(<==> x3 (not x4))", "not(<==>(x3, x4))"},
      {"(<==> x3 x3)", "1"},
      {"(==> x3 x4 1)", "or(x4, not(x3))"},
      {"(==> x3 x4 0)", "and(x3, x4)"},
      {"(if x3 5 2)", "3*x3 + 2"},
      {"(if (not x3) x0 x1)", "if(x3, x1, x0)"},
      {"(if x3 x0 x0)", "x0"},
      {"(if x3 1 x4)", "or(x3, x4)"},
      {"(if x3 x0 0)", "if(x3, x0, 0)"},
      {"(if (<= x5 7) x0 x1)", "x0"},
      // Counting.
      {"(count x3 x4 x2)", "x3 + x4 + <=(-x2 + 1)"},
      {"(numberof 1 x3 x4 x1)", "x3 + x4 + =(x1 - 1)"},
      {"(atleast 1 (count x3 x4))", "<=(-x3 - x4 + 1)"},
      {"(not_atmost 1 (count x3 x4))", "<=(-x3 - x4 + 2)"},
      {"(not_exactly 1 (count x3 x4))", "not(=(x3 + x4 - 1))"},
      {"(alldiff x0 x1 x0)", "0"},
      {"(alldiff x0 x1)", "not(=(x0 - x1))"},
      {"(not_alldiff x0 x1 x2)", "not(alldiff(x0, x1, x2))"},
  });
}

TEST(ImportTest, DefinedVariablesAreSharedAndTakenInFirst) {
  const std::vector<const char*> defined{"(exp x0)", "(times d0 d0)", "(plus d1 (abs d0))"};
  check({{"(plus d2 (times d0 2))", "3*exp(x0) + product(exp(x0), exp(x0))"}, {"d0", "exp(x0)"}}, defined);
}

TEST(ImportTest, RefusesByElement) {
  const Case cases[] = {
      {"(precision x0 3)", "the operator precision cannot be given to the solver"},
      {"(function_call x0 x1)", "the imported function \"\" cannot be given to the solver"},
      {"(symbolic_if x3 1 2)", "the operator symbolic if cannot be given to the solver"},
      {"(symbolic_numberof 1 2)", "the operator symbolic numberof cannot be given to the solver"},
      {"(power 0 0)", "a power 0^0 has no value"},
      {"(power (minus x0 x0) (times 0 x1))", "a power 0^0 has no value"},
      {"(power -2 x0)", "the base -2 of a power with a variable exponent must be positive"},
      {"(signed_power x0 0.5)", "the exponent 0.5 of a signed power must be 1 or more"},
      {"(divide x0 (minus 2 2))", "the second operand of divide is 0"},
      {"(mod x0 0)", "the second operand of mod is 0"},
      {"(round x0 x1)", "operand 2 of round must be a number"},
      {"(round x0 0.5)", "round to 0.5 digits: the number of digits must be whole and small"},
      {"(exp 1000)", "exp of constants has no finite value"},
      {"(sqrt (negate 4))", "sqrt of constants has no finite value"},
      {"(plus x0 (times 1e200 1e200))", "constants of a sum or product overflow"},
      {"(plus (times 1e308 x0) (times 1e308 x0))", "constants of a sum or product overflow"},
  };
  for (const auto& [expression, expected] : cases) {
    Model model(kColumns);
    const int added = model.add(expression);
    try {
      model.number(added);
      ADD_FAILURE() << expression << " is taken";
    } catch (const tav::opt::SupportException& e) {
      EXPECT_EQ(e.message(), std::string("row r: ") + expected) << expression;
    }
  }
}

// A chain of a million operators over as many columns, whichever way it leans: the value at a point, and few nodes.
TEST(ImportTest, DeepChains) {
  constexpr int kCount = 1'000'000;
  const struct {
    kavo_operator op;
    bool leansRight;
    std::size_t nodesPerOperator;  // besides those of the columns
  } cases[] = {{KAVO_OP_PLUS, false, 0},
               {KAVO_OP_MINUS, true, 1},
               {KAVO_OP_LOGICAL_AND, true, 0},
               {KAVO_OP_TIMES, false, 1},
               {KAVO_OP_ATAN2, true, 1}};
  const std::vector<Model::Column> columns(kCount + 1, {0, 1, KAVO_BINARY});
  std::vector<double> point(columns.size());
  for (std::size_t k = 0; k < point.size(); ++k) point[k] = k % 3 == 1 ? 0 : 1;
  for (const auto& [op, leansRight, nodesPerOperator] : cases) {
    Model model(columns);
    model.push(KAVO_OP_VARIABLE, 0);
    for (int k = 1; k <= kCount; ++k) {
      model.push(KAVO_OP_VARIABLE, k);
      if (!leansRight) model.push(op);
    }
    for (int k = 1; leansRight && k <= kCount; ++k) model.push(op);
    const int chain = model.end();
    const NodeId node = model.number(chain);
    EXPECT_LE(model.graph.size(), (1 + nodesPerOperator) * kCount + 100) << op;
    std::vector<double> values;
    brel::expr::evaluate(model.graph, point, values);
    double largest = 0;
    EXPECT_EQ(values[static_cast<std::size_t>(node)], model.naive(chain, point, largest)) << op << leansRight;
  }
}

TEST(ImportTest, OnlyColumnsThatMaySwitchRowsAreTruthValues) {
  struct {
    Model::Column column;
    bool isTruth;
  } const cases[]{{{0, 1, KAVO_BINARY}, true},       {{-3, 9, KAVO_BINARY}, true},
                  {{0, 1, KAVO_INTEGER}, true},      {{0, 1 + 1e-7, KAVO_INTEGER}, false},
                  {{-1e-7, 1, KAVO_INTEGER}, false}, {{0, 1, KAVO_SEMIINTEGER}, false},
                  {{1, 1, KAVO_SEMIINTEGER}, false}, {{0, 1}, false}};
  for (const auto& [column, isTruth] : cases) {
    Model model({column});
    EXPECT_EQ(model.graph.isTruth(model.column(0)), isTruth) << column.lower << ' ' << column.upper;
    const bool isWidened = model.graph.interval(model.column(0)).upper > column.upper;
    EXPECT_FALSE(isWidened && column.type == KAVO_CONTINUOUS);
  }
}

TEST(ImportTest, NamesTheImportedFunction) {
  const std::string path = testing::TempDir() + "imported.nl";
  std::ofstream(path) << "g3 0 1 0\n 1 0 1 0 0\n 0 1\n 0 0\n 0 1 0\n 0 1 0 1\n 0 0 0 0 0\n 0 1\n 0 0\n 0 0 0 0 0\n"
                         "F0 0 1 gammaln\nO0 0\nf0 1\nv0\nb\n3\nk0\nG0 1\n0 0\n";
  trpRec* handle = nullptr;
  ASSERT_EQ(kavo_create(&handle), KAVO_OK);
  ASSERT_EQ(kavo_read(handle, path.c_str()), KAVO_OK) << kavo_last_error();
  kavo_columns columns{};
  kavo_expressions expressions{};
  ASSERT_EQ(kavo_link_columns(handle, &columns), KAVO_OK);
  ASSERT_EQ(kavo_link_expressions(handle, &expressions), KAVO_OK);
  Graph graph;
  brel::expr::HostExpressions host(handle, columns, expressions, graph);
  try {
    host.number(0, "objective cost");
    ADD_FAILURE() << "taken";
  } catch (const tav::opt::SupportException& e) {
    EXPECT_EQ(e.message(), "objective cost: the imported function \"gammaln\" cannot be given to the solver");
  }
  EXPECT_EQ(kavo_free(&handle), KAVO_OK);
}

}  // namespace
}  // namespace expr_test
