// What each rule makes of the user's expressions: the model before and after.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "brel/rewrite/rewrite_beyond.h"
#include "tests/brel/beyond_text.h"
#include "tests/brel/formula.h"
#include "tests/brel/host.h"

namespace {

using namespace brel_test;

constexpr double kInfinite = kNone;

// x0, x1 real in [-4, 10]; x2, x3 whole in [0, 3]; x4, x5 binary; x6 real without bounds. So x7 is the first made.
constexpr int kFirstMade = 7;

struct Case {
  const char* rule;
  const char* formula;
  double lower, upper;  // a row; both NaN: a logical constraint
  const char* after;
};

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

void addColumns(HostModel& model) {
  model.add({{"", -4, 10},
             {"", -4, 10},
             {"", 0, 3, KAVO_INTEGER},
             {"", 0, 3, KAVO_INTEGER},
             {"", 0, 1, KAVO_BINARY},
             {"", 0, 1, KAVO_BINARY},
             {"", -kInfinite, kInfinite}},
            {});
}

std::string after(const Case& given) {
  HostModel model;
  addColumns(model);
  const int formula = addFormula(model, given.formula);
  if (std::isnan(given.lower)) {
    EXPECT_EQ(kavo_add_logical(model, 1, &formula, nullptr), KAVO_OK) << kavo_last_error();
  } else {
    model.add({}, {{"", given.lower, {}, given.upper}});
    const int row = 0;
    EXPECT_EQ(kavo_set_expressions(model, KAVO_ROW, 1, &row, &formula), KAVO_OK) << kavo_last_error();
  }
  const auto user = brel::userModel(model);
  return textOf(*brel::rewrite::rewriteBeyond(user, 1, {}), kFirstMade);
}

class Rules : public testing::TestWithParam<Case> {};

TEST_P(Rules, BeforeAndAfter) { EXPECT_EQ(after(GetParam()), GetParam().after); }

const Case kNumeric[] = {
    {"abs", "(abs (minus x0 x1))", -kInfinite, 3,
     "x7 in [-14, 14]\n"
     "x8 in [0, 14]\n"
     "-x0 + x1 + x7 = 0\n"
     "x8 <= 3  (row 0)\n"
     "Subtract(x8, Abs(x7)) = 0\n"},
    {"absAsResult", "(minus x6 (abs x0))", 0, 0, "Subtract(x6, Abs(x0)) = 0\n"},
    {"minNested", "(exp (min x0 x1))", -kInfinite, 9,
     "x7 in [-4, 10]\n"
     "Subtract(x7, Min(x0, x1)) = 0\n"
     "Add(-9, Exp(x7)) <= 0  (row 0)\n"},
    {"norm2", "(norm2 x0 x1)", -kInfinite, 5,
     "x7 in [0, 14.1421]\n"
     "x7 <= 5  (row 0)\n"
     "Subtract(x7, Norm2(Vectorize(x0, x1))) = 0\n"},
    {"logBase", "(logarithm_to_a_base (plus x0 5) 3)", -kInfinite, 2,
     "Add(-2, Multiply(0.910239, Log(Add(x0, 5)))) <= 0  (row 0)\n"},
    {"sinh", "(sinh x0)", -kInfinite, 2,
     "Add(-2, Multiply(0.5, Exp(x0)), Multiply(-0.5, Exp(Negate(x0)))) <= 0  (row 0)\n"},
    {"asin", "(asin x0)", 0.5, kInfinite,
     "x7 in [-1.5708, 1.5708]\n"
     "x7 >= 0.5  (row 0)\n"
     "Add(-x0, Sin(x7)) = 0\n"},
    {"acosh", "(acosh x0)", -kInfinite, 1,
     "x7 in [0, 2.99322]\n"
     "x7 <= 1  (row 0)\n"
     "Add(-x0, Multiply(0.5, Exp(x7)), Multiply(0.5, Exp(Negate(x7)))) = 0\n"},
    {"atan2", "(atan2 x0 (plus x1 5))", -kInfinite, 1,
     "x7 in [-1.32582, 1.47113]\n"
     "x7 <= 1  (row 0)\n"
     "Add(-x0, Multiply(Add(x1, 5), Tan(x7))) = 0\n"},
    {"generalPower", "(power x0 x1)", -kInfinite, 8, "Add(-8, Exp(Multiply(x1, Log(x0)))) <= 0  (row 0)\n"},
    {"floor", "(floor x0)", 2, 2,
     "x7 in [-4, 10] whole\n"
     "x0 - x7 >= 0\n"
     "x0 - x7 <= 0.9999\n"
     "x7 = 2  (row 0)\n"},
    {"round", "(round x0 0)", 2, kInfinite,
     "x7 in [-4, 10] whole\n"
     "x8 in [0, 1] whole\n"
     "x7 >= 2  (row 0)\n"
     "x8 = 1: x0 >= 0\n"
     "x8 = 0: x0 <= 0\n"
     "x8 = 1: x0 - x7 >= -0.5\n"
     "x8 = 1: x0 - x7 <= 0.4999\n"
     "x8 = 0: x0 - x7 >= -0.4999\n"
     "x8 = 0: x0 - x7 <= 0.5\n"},
    {"modByVarying", "(mod x3 (minus x2 x1))", 1, 1,
     "x7 in [-inf, inf] whole\n"
     "x8 in [-inf, inf]\n"
     "x9 in [0.0001, 10]\n"
     "x10 in [-10, 7]\n"
     "x1 - x2 + x10 = 0\n"
     "x8 >= 0\n"
     "x8 - x9 <= -0.0001\n"
     "x8 = 1  (row 0)\n"
     "-x3 + x8 - x1*x7 + x2*x7 = 0\n"
     "Subtract(x9, Abs(x10)) = 0\n"},
    {"modByWhole", "(mod x3 x2)", 1, 1,
     "x7 in [0, 3] whole\n"
     "x8 in [-9, 3] whole\n"
     "x2 >= 1\n"
     "x8 >= 0\n"
     "-x2 + x8 <= -1\n"
     "x8 = 1  (row 0)\n"
     "-x3 + x8 + x2*x7 = 0\n"},
    {"constantToAnExpression", "(power 3 (plus x0 x1))", -kInfinite, 9,
     "Add(-9, Exp(Add(Multiply(1.09861, x0), Multiply(1.09861, x1)))) <= 0  (row 0)\n"},
    {"branchWithDomain", "(if (>= x0 0) (sqrt x0) -1)", -kInfinite, 1,
     "x7 in [0, 1] whole\n"
     "x8 in [0, 10]\n"
     "x9 in [0, 1] whole\n"
     "x10 in [-1, 3.16228]\n"
     "x11 in [0, 3.16228]\n"
     "-x7 + x9 >= 0\n"
     "x10 <= 1  (row 0)\n"
     "x7 = 1: -x0 <= 0\n"
     "x7 = 0: -x0 >= 0.0001\n"
     "x9 = 1: -x0 + x8 = 0\n"
     "x7 = 1: x10 - x11 = 0\n"
     "x7 = 0: x10 = -1\n"
     "Add(x11, Negate(SquareRoot(x8))) = 0\n"},
    {"angle", "(atan2 x0 x1)", -kInfinite, 1,
     "x7 in [-3.14159, 3.14159]\n"
     "x8 in [0, 14.1421]\n"
     "x9 in [0, 1] whole\n"
     "x7 <= 1  (row 0)\n"
     "x9 = 1: x0 <= -0.0001\n"
     "x9 = 1: x7 <= 0\n"
     "x9 = 0: x0 >= 0\n"
     "x9 = 0: x7 >= 0\n"
     "Add(-x0, Multiply(x8, Sin(x7))) = 0\n"
     "Add(-x1, Multiply(x8, Cos(x7))) = 0\n"},
    {"trunc", "(trunc x0 0)", 2, kInfinite,
     "x7 in [-4, 10] whole\n"
     "x8 in [0, 1] whole\n"
     "x7 >= 2  (row 0)\n"
     "x8 = 1: x0 >= 0\n"
     "x8 = 0: x0 <= 0\n"
     "x8 = 1: x0 - x7 >= 0\n"
     "x8 = 1: x0 - x7 <= 0.9999\n"
     "x8 = 0: x0 - x7 >= -0.9999\n"
     "x8 = 0: x0 - x7 <= 0\n"},
    {"modOfWhole", "(mod x2 2)", 1, 1,
     "x7 in [0, 1] whole\n"
     "x2 - 2 x7 >= 0\n"
     "x2 - 2 x7 <= 1\n"
     "x2 - 2 x7 = 1  (row 0)\n"},
    {"integerDivide", "(div x0 3)", -kInfinite, 2,
     "x7 in [-1, 3] whole\n"
     "x8 in [0, 1] whole\n"
     "x7 <= 2  (row 0)\n"
     "x8 = 1: x0 >= 0\n"
     "x8 = 0: x0 <= 0\n"
     "x8 = 1: x0 - 3 x7 >= 0\n"
     "x8 = 1: x0 - 3 x7 <= 2.9999\n"
     "x8 = 0: x0 - 3 x7 >= -2.9999\n"
     "x8 = 0: x0 - 3 x7 <= 0\n"},
    {"piecewise", "(piecewise-linear 1 2 3 x0)", -kInfinite, 8,
     "x7 in [0, 1]\n"
     "x8 in [0, 1]\n"
     "x9 in [0, 1]\n"
     "x7 + x8 + x9 = 1\n"
     "-x0 - 4 x7 + 2 x8 + 10 x9 = 0\n"
     "-4 x7 + 2 x8 + 26 x9 <= 8  (row 0)\n"
     "SOS2: x7 + 2 x8 + 3 x9\n"},
    {"piecewiseUnbounded", "(piecewise-linear -1 0 1 4 2 x6)", -kInfinite, 8,
     "x7 in [0, inf]\n"
     "x8 in [0, 1]\n"
     "x9 in [0, 1]\n"
     "x10 in [0, inf]\n"
     "x8 + x9 = 1\n"
     "-x6 - x7 + 4 x9 + x10 = 0\n"
     "x7 + 4 x9 + 2 x10 <= 8  (row 0)\n"
     "SOS2: x7 + 2 x8 + 3 x9 + 4 x10\n"},
    {"quadratic", "(times (minus x0 x1) (plus x0 (plus x1 2)))", -kInfinite, 8,
     "2 x0 - 2 x1 + x0*x0 - x1*x1 <= 8  (row 0)\n"},
    {"quadraticRange", "(times x0 x1)", 1, 8,
     "x0*x1 >= 1  (row 0)\n"
     "x0*x1 <= 8  (row 0)\n"},
    {"nonlinearRange", "(sin x0)", 0, 0.5,
     "x7 in [0, 0.5]\n"
     "Add(-x7, Sin(x0)) = 0  (row 0)\n"},
    {"affine", "(times 3 (plus x0 (times 2 x1)))", 3, 9,
     "x7 in [3, 9]\n"
     "3 x0 + 6 x1 - x7 = 0  (row 0)\n"},
    {"less", "(less x0 2)", -kInfinite, 1,
     "x7 in [0, 0] whole\n"
     "x8 in [-6, 8]\n"
     "x9 in [0, 8]\n"
     "-x0 + x8 = -2\n"
     "x9 <= 1  (row 0)\n"
     "Subtract(x9, Max(x7, x8)) = 0\n"},
    {"count", "(count (<= x0 1) (>= x2 2) x4)", 2, kInfinite,
     "x7 in [0, 1] whole\n"
     "x8 in [0, 1] whole\n"
     "x4 + x7 + x8 >= 2  (row 0)\n"
     "x7 = 1: x0 <= 1\n"
     "x7 = 0: x0 >= 1.0001\n"
     "x8 = 1: -x2 <= -2\n"
     "x8 = 0: -x2 >= -1\n"},
    {"numberOf", "(numberof 2 x2 x3)", 1, 1,
     "x7 in [0, 1] whole\n"
     "x8 in [0, 1] whole\n"
     "x9 in [0, 1] whole\n"
     "x10 in [0, 1] whole\n"
     "x11 in [0, 1] whole\n"
     "x12 in [0, 1] whole\n"
     "x7 + x8 + x9 = 1\n"
     "x10 + x11 + x12 = 1\n"
     "x7 + x10 = 1  (row 0)\n"
     "x7 = 1: x2 = 2\n"
     "x8 = 1: x2 <= 1\n"
     "x9 = 1: x2 >= 3\n"
     "x10 = 1: x3 = 2\n"
     "x11 = 1: x3 <= 1\n"
     "x12 = 1: x3 >= 3\n"},
};

const Case kLogical[] = {
    {"comparison", "(< x0 x1)", kNan, kNan, "x0 - x1 <= -0.0001\n"},
    {"notEqual", "(!= x2 x3)", kNan, kNan,
     "x7 in [0, 1] whole\n"
     "x7 = 1: x2 - x3 <= -1\n"
     "x7 = 0: x2 - x3 >= 1\n"},
    {"implicationGuard", "(==> x4 (and (<= x0 1) (>= x1 2)) 1)", kNan, kNan,
     "x4 = 1: x0 <= 1\n"
     "x4 = 1: -x1 <= -2\n"},
    {"notImplied", "(or (not x4) (< x2 2))", kNan, kNan, "x4 = 1: x2 <= 1\n"},
    {"notAnd", "(not (and x4 (> x0 1)))", kNan, kNan,
     "x7 in [0, 1] whole\n"
     "-x4 - x7 >= -1\n"
     "x7 = 0: -x0 >= -1\n"},
    {"orWithDomain", "(or (<= x0 0) (<= (log x0) 1))", kNan, kNan,
     "x7 in [0, 1] whole\n"
     "x8 in [0, 10]\n"
     "x9 in [0, 1] whole\n"
     "x10 in [-inf, 2.30259]\n"
     "x11 in [0, 1] whole\n"
     "x7 + x11 >= 1\n"
     "x9 - x11 >= 0\n"
     "x7 = 1: x0 <= 0\n"
     "x9 = 1: -x0 + x8 = 0\n"
     "x11 = 1: x10 <= 1\n"
     "Add(x10, Negate(Log(x8))) = 0\n"},
    {"productAsTruth", "(times x4 x5)", kNan, kNan, "x4*x5 = 1\n"},
    {"equivalence", "(<==> x4 (<= x0 1))", kNan, kNan,
     "x4 = 1: x0 <= 1\n"
     "x4 = 0: x0 >= 1.0001\n"},
    {"exactly", "(exactly 1 (count x4 x5 (>= x0 3)))", kNan, kNan,
     "x7 in [0, 1] whole\n"
     "x4 + x5 + x7 = 1\n"
     "x7 = 1: -x0 <= -3\n"
     "x7 = 0: -x0 >= -2.9999\n"},
    {"andInBothDirections", "(<==> (and x4 (not x5)) (>= x0 3))", kNan, kNan,
     "x7 in [0, 1] whole\n"
     "x8 in [0, 1] whole\n"
     "x9 in [0, 1] whole\n"
     "x5 + x9 = 1\n"
     "x7 - x8 = 0\n"
     "x7 = 1: -x0 <= -3\n"
     "x7 = 0: -x0 >= -2.9999\n"
     "Subtract(x8, BoolAnd(x4, x9)) = 0\n"},
    {"sameOrNot", "(or (<==> x4 x5) (<= x0 0))", kNan, kNan,
     "x7 in [0, 1] whole\n"
     "x8 in [0, 1] whole\n"
     "x4 - x5 + x7 <= 1\n"
     "-x4 + x5 + x7 <= 1\n"
     "-x4 - x5 + x7 >= -1\n"
     "x4 + x5 + x7 >= 1\n"
     "x7 + x8 >= 1\n"
     "x8 = 1: x0 <= 0\n"},
    {"notAllDifferent", "(not_alldiff x2 x3 x0)", kNan, kNan,
     "x7 in [0, 1] whole\n"
     "x8 in [0, 1] whole\n"
     "x9 in [0, 1] whole\n"
     "x10 in [0, 1] whole\n"
     "x7 + x8 + x9 + x10 >= 1\n"
     "x7 = 0\n"
     "x8 = 1: -x2 + x3 = 0\n"
     "x9 = 1: x0 - x2 = 0\n"
     "x10 = 1: x0 - x3 = 0\n"},
};

INSTANTIATE_TEST_SUITE_P(Numeric, Rules, testing::ValuesIn(kNumeric), [](const auto& c) { return c.param.rule; });
INSTANTIATE_TEST_SUITE_P(Logical, Rules, testing::ValuesIn(kLogical), [](const auto& c) { return c.param.rule; });

}  // namespace
