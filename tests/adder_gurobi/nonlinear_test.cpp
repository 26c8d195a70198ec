// Nonlinear rows and objectives as the real library understands them.
#include <gmock/gmock.h>

#include <cmath>

#include "tav/math/evaluator.h"
#include "tests/grb/real_solver.h"
#include "tests/tav/expressions.h"

namespace grb {
namespace {

namespace tag = tav::opt::tag;
using Doubles = std::vector<double>;

constexpr double kFree = 1e100;
constexpr int kEqual = 2;
constexpr double kTolerance = 1e-5;  // Gurobi keeps rows within 1e-6; what follows from them is allowed ten times that

class NonlinearGurobiTest : public RealSolver {
 protected:
  void addVariables(const Doubles& lower, const Doubles& upper) {
    SolverFixture::addVariables(variables(std::vector<int>(lower.size(), 0), {lower, upper}));
  }
  void addRows(int type, const std::vector<std::string>& texts, const OwnGroup& own = {}) {
    std::vector<Symbol> functions;
    for (const std::string& text : texts) functions.push_back(symbol(space(), text));
    add(tag::kStaticBoundedDomain, tag::kIdentityFunction,
        expressions(std::vector<int>(texts.size(), type), functions, {}, own));
  }
  Doubles solve() {
    EXPECT_EQ(solver.solve(), tav::opt::Termination::finished);
    return ofVariables(tav::opt::VariableQuantity::level).getAll();
  }
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
  SolverFixture::addVariables(variables(types, {given.lower, given.upper}));
  addRows(kEqual, given.rows);  // without a tree: each is told in the log and taken as what it is
  expectValues(texts, kPoint, solve(), space());
  EXPECT_THAT(log->text, testing::HasSubstr("Function not supported: tav:function:logic:BoolAnd"));
}

}  // namespace
}  // namespace grb
