// Nonlinear rows and objectives as the real library understands them.
#include <gmock/gmock.h>

#include <cmath>

#include "grb/solver.h"
#include "tav/math/evaluator.h"
#include "tests/grb/blocks.h"
#include "tests/grb/expressions.h"
#include "tests/grb/listeners.h"

namespace grb {
namespace {

namespace tag = tav::opt::tag;
using tav::math::Symbol;
using Q = tav::opt::RowQuantity;
using Doubles = std::vector<double>;

constexpr double kFree = 1e100;
constexpr int kGreater = 0;
constexpr int kEqual = 2;
constexpr double kTolerance = 1e-5;  // Gurobi keeps rows within 1e-6; what follows from them is allowed ten times that

class NonlinearGurobiTest : public testing::Test {
 protected:
  NonlinearGurobiTest() {
    solver.setLog(log);
    solver.setup();
  }

  void addVariables(const Doubles& lower, const Doubles& upper) {
    solver.makeVariableAdder(tag::kIntervalDomain, {})
        ->add(variables(std::vector<int>(lower.size(), 0), {lower, upper}));
  }
  void addRows(int type, const std::vector<std::string>& texts, const OwnGroup& own = {}) {
    std::vector<Symbol<double>> functions;
    for (const std::string& text : texts) functions.push_back(symbol(space(), text));
    solver.makeConstraintAdder(tag::kStaticBoundedDomain, tag::kIdentityFunction)
        ->add(block<tav::opt::ConstraintContainer>(
            tag::kConstraint,
            {{Q::type, values(std::vector<int>(texts.size(), type))}, {Q::function, values(functions)}}, own));
  }
  void addObjective(int sense, const char* text) {
    solver.makeConstraintAdder(tag::kSenseDomain, tag::kIdentityFunction)
        ->add(block<tav::opt::ConstraintContainer>(tag::kConstraint,
                                                   {{Q::type, values(std::vector<int>{sense})},
                                                    {Q::function, values<Symbol<double>>({symbol(space(), text)})}},
                                                   {}));
  }
  std::uint64_t space() { return solver.makeVariableAdder(tag::kIntervalDomain, {})->variableSpace(); }
  Doubles solve() {
    EXPECT_EQ(solver.solve(), tav::opt::Termination::finished);
    return solver.makeVariableContainers({}).get(tav::opt::VariableQuantity::level).as<double>().getAll();
  }

  std::shared_ptr<TextLog> log = std::make_shared<TextLog>();
  Solver solver{Library::open(GRBLINK_BRIDGE_PATH)};
};

// Each text is a function of fixed variables; Gurobi says what it is, and so do we.
void expectValues(const std::vector<std::string>& texts, const Doubles& point, const Doubles& solution,
                  std::uint64_t space) {
  tav::math::Evaluator evaluate;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const double expected = evaluate(expression(space, texts[i])->whole(), point);
    EXPECT_NEAR(solution.at(point.size() + i), expected, kTolerance * std::max(1.0, std::fabs(expected))) << texts[i];
  }
}

// Rows that say that the variables after those of the point are the functions, and bounds that leave them free.
struct Definitions {
  Definitions(const std::vector<std::string>& texts, const Doubles& point) : lower(point), upper(point) {
    for (const std::string& text : texts) {
      rows.push_back(fmt::format("Subtract(x{}, {})", lower.size(), text));
      lower.push_back(-kFree);
      upper.push_back(kFree);
    }
  }
  Doubles lower, upper;
  std::vector<std::string> rows;
};

const Doubles kPoint{0.5, -1.25, 2, 0.1, 1, 0};

TEST_F(NonlinearGurobiTest, ComputesExpressionsAsWeDo) {
  const std::vector<std::string> texts{
      "Add(x0, Sin(x1), Multiply(x2, x3), 4, lin(2 x0 -1 x1 3))",
      "Subtract(Divide(x1, Exp(x0)), Divide(Cos(x2), x0))",
      "Negate(Multiply(Tan(x0), Square(x1)))",
      "SquareRoot(Add(x2, Square(Sin(x1))))",
      "Log(Add(1, Exp(lin(1 x0 1 x1 -0.5))))",
      "Add(Log2(x2), Multiply(10, Log10(x0)))",
      "Multiply(Sigmoid(x1), tanh(x0))",
      "Power(x1, 3)",
      "Power(x2, -1.5)",
      "Power0(2.5, x1)",
      "PowerConst(x2, 3)",
      "PowerConst(x0, 0)",
      "PowerConst(Add(x0, x3), 2.5)",
      "Subtract(SignPower(x1, 1.5), SignPower(x2, 2))",
      "Sin(Sin(Sin(Sin(lin(-3 x3 1)))))",
      "lin(2 x0 5)",
  };
  const Definitions given(texts, kPoint);
  addVariables(given.lower, given.upper);
  addRows(kEqual, given.rows);
  expectValues(texts, kPoint, solve(), space());
  EXPECT_THAT(log->text, testing::Not(testing::HasSubstr("Cannot add")));
}

TEST_F(NonlinearGurobiTest, ComputesFunctionConstraintsAsWeDo) {
  const std::vector<std::string> texts{
      "Abs(x1)",
      "Log(x0)",
      "Exp(x1)",
      "Sin(x1)",
      "Cos(x1)",
      "Tan(x0)",
      "Sigmoid(x1)",
      "Norm1(terms(1 x0 1 x1 1 x2))",
      "Norm2(Vectorize(x0, x1, x2))",
      "NormInf(Vectorize(x0, x1))",
      "LogBase(x2, 5)",
      "Power(3, x1)",
      "Power(x2, 2.5)",
      "PowerConst(x1, 3)",
      "Polynomial(x1, [2 -1 0 3])",
      "Min(x0, x1, x2)",
      "Max(x0, x1)",
  };
  const Definitions given(texts, kPoint);
  addVariables(given.lower, given.upper);
  addRows(kEqual, given.rows, {{"trynonlin", values(std::vector<int>(texts.size(), 0))}});
  expectValues(texts, kPoint, solve(), space());
}

// Gurobi wants binary operands; fixed ones are.
TEST_F(NonlinearGurobiTest, ComputesLogicAsWeDo) {
  const std::vector<std::string> texts{"BoolAnd(x4, x5)", "BoolOr(x4, x5)", "BoolAnd(x4)", "BoolOr(x5)"};
  Definitions given(texts, kPoint);
  std::vector<int> types(given.lower.size(), 0);
  for (std::size_t i = 4; i < types.size(); ++i) {
    types[i] = 1;
    if (i < kPoint.size()) continue;
    given.lower[i] = 0;
    given.upper[i] = 1;
  }
  solver.makeVariableAdder(tag::kIntervalDomain, {})->add(variables(types, {given.lower, given.upper}));
  addRows(kEqual, given.rows);  // without a tree: each is told in the log and taken as what it is
  expectValues(texts, kPoint, solve(), space());
  EXPECT_THAT(log->text, testing::HasSubstr("Function not supported: tav:function:logic:BoolAnd"));
}

TEST_F(NonlinearGurobiTest, FindsKnownOptima) {
  const struct Case {
    const char* objective;
    int sense;
    Doubles lower, upper;
    const char* row;  // required to be at least 0
    Doubles solution;
    double value;
  } cases[]{
      // the valley of Rosenbrock
      {"Add(Square(Subtract(1, x0)), Multiply(100, Square(Subtract(x1, Square(x0)))))",
       0,
       {-2, -2},
       {2, 2},
       "1",
       {1, 1},
       0},
      // x exp(-x) is largest at 1
      {"Add(Multiply(x0, Exp(Negate(x0))), 3)", 1, {0}, {5}, "1", {1}, 3 + std::exp(-1)},
      // linear terms beside the rest: x + 1/x
      {"Add(x0, Divide(1, x0))", 0, {0.1}, {10}, "1", {1}, 2},
      // a cube may be negative, unless its logarithm is taken
      {"Add(x0, 0)", 0, {-10}, {10}, "Add(Power(x0, 3), 8)", {-2}, -2},
      {"Add(x0, 0)", 0, {-10}, {10}, "Add(PowerConst(x0, 3), 8)", {0}, 0},
  };
  for (const Case& c : cases) {
    solver.clear();
    addVariables(c.lower, c.upper);
    addRows(kGreater, {c.row});
    addObjective(c.sense, c.objective);
    const Doubles solution = solve();
    // Flat near the optimum: the point is less exact than the value, which the gap of 1e-4 bounds.
    for (std::size_t i = 0; i < c.solution.size(); ++i) EXPECT_NEAR(solution.at(i), c.solution[i], 5e-2) << c.objective;
    tav::math::Evaluator evaluate;
    EXPECT_NEAR(evaluate(expression(space(), c.objective)->whole(), solution), c.value, 1e-3) << c.objective;
  }
}

}  // namespace
}  // namespace grb
