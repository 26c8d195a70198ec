#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "tav/math/evaluator.h"
#include "tav/math/fn/catalogue.h"
#include "tests/tav/expression_text.h"
#include "tests/tav/expressions.h"
#include "tests/tav/thrown.h"

using tav::CheckException;
using tav::math::Evaluator;
namespace fn = tav::math::fn;
using Expression = tav::math::Expression<double>;
using View = tav::math::ExpressionView<double>;
using Symbol = tav::math::Symbol<double>;
using Kind = tav::math::SymbolKind;
using Linear = tav::math::LinearFunction<double>;
using Starts = std::vector<unsigned long long>;
using Doubles = std::vector<double>;

namespace {

constexpr unsigned long long kSpace = 42;

}  // namespace

TEST(SymbolTest, IsOneKindAndReadsOnlyThat) {
  const auto expression = std::make_shared<Expression>();
  expression->addConstant(1);
  const struct Case {
    Symbol symbol;
    Kind kind = Kind::kConstant;
    const char* name = "";
  } cases[] = {
      {Symbol::ofVariable(kSpace, 3), Kind::kVariable, "variable"},
      {Symbol::ofConstant(2.5), Kind::kConstant, "constant"},
      {Symbol::ofVector(std::make_shared<tav::math::Vector<double>>()), Kind::kVector, "vector argument"},
      {Symbol::ofLinear({}), Kind::kLinear, "linear function"},
      {Symbol::ofCall(fn::the<fn::Sin>(), 1), Kind::kCall, "function call"},
      {Symbol::ofExpression(expression), Kind::kExpression, "expression"},
      {Symbol::ofView(expression->whole()), Kind::kExpressionView, "expression view"},
      {Symbol::ofQuadratic(std::make_shared<tav::math::QuadraticFunction<double>>()), Kind::kQuadratic,
       "quadratic function"},
  };
  const std::function<void(const Symbol&)> readers[] = {
      [](const Symbol& s) { s.asVariable(); },   [](const Symbol& s) { s.asConstant(); },
      [](const Symbol& s) { s.asVector(); },     [](const Symbol& s) { s.asLinear(); },
      [](const Symbol& s) { s.asCall(); },       [](const Symbol& s) { s.asExpression(); },
      [](const Symbol& s) { s.asExpression(); }, [](const Symbol& s) { s.asQuadratic(); }};
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    EXPECT_EQ(cases[i].symbol.kind(), cases[i].kind);
    EXPECT_EQ(kindName(cases[i].symbol.kind()), cases[i].name);
    for (std::size_t k = 0; k < std::size(readers); ++k) {
      const bool bothExpressions = (k == 5 || k == 6) && (i == 5 || i == 6);
      const bool fits = k == i || bothExpressions;
      if (fits) {
        EXPECT_NO_THROW(readers[k](cases[i].symbol)) << cases[i].name;
      } else {
        EXPECT_THROW(readers[k](cases[i].symbol), CheckException) << cases[i].name << k;
      }
    }
  }
  EXPECT_EQ(messageOf<CheckException>([&] { cases[0].symbol.asConstant(); }),
            "'kind' (which is variable) must be equal to 'expected' (which is constant).");
  EXPECT_EQ(Symbol().asConstant(), 0);
}

TEST(SymbolTest, ALinearFunctionBorrowsOrKeepsItsTerms) {
  const std::vector<int> columns = {1, 4, 2};
  const Doubles values = {0.5, -1, 2};
  const Symbol row = Symbol::ofLinear({kSpace, std::span(columns).first(2), std::span(values).first(2), 7, nullptr});
  EXPECT_EQ(row.asLinear().positions.data(), columns.data()) << "a row is not copied";
  EXPECT_EQ(row.asLinear().termCount(), 2);
  const Symbol copy = [] { return Symbol(Symbol::ofLinear(Linear::owning(kSpace, {3}, {1.5}, 0))); }();
  EXPECT_EQ(copy.asLinear().positions[0], 3);
  EXPECT_EQ(copy.asLinear().coefficients[0], 1.5);
}

TEST(ExpressionTest, ArgumentsInOrder) {
  const auto kept = expression(kSpace, "Subtract(Sin(x3), Add(x0, 2, Exp(x1)))");
  const Expression& e = *kept;
  const View whole = e.whole();
  EXPECT_EQ(expressionText(whole), "Subtract(Sin(x3), Add(x0, 2, Exp(x1)))");
  EXPECT_EQ(whole.argumentStarts(2), (Starts{0, 2}));
  EXPECT_EQ(whole.argumentStarts(2, true), (Starts{0, 2, 7}));
  EXPECT_EQ(whole.argumentStarts(1), Starts{0});
  EXPECT_EQ(whole.argumentStarts(1, true), (Starts{0, 2}));
  const View sum(e, 2, 5);
  EXPECT_EQ(expressionText(sum), "Add(x0, 2, Exp(x1))");
  EXPECT_EQ(sum.argumentStarts(3, true), (Starts{0, 1, 2, 4})) << "counted within the view";
  EXPECT_EQ(View(e, 0, 1).argumentStarts(0, true), Starts{0}) << "a leaf has no arguments";
  EXPECT_EQ(messageOf<CheckException>([&] { whole.argumentStarts(3); }),
            "'count' (which is 3) must be less or equal to 'argumentCount()' (which is 2).");
  EXPECT_THROW(whole.at(8), CheckException);
  struct Part {
    std::size_t start;
    std::size_t count;
  };
  for (const Part part : {Part{0, 0}, Part{8, 1}, Part{0, 9}, Part{1, 7}, Part{2, 2}, Part{0, 7}}) {
    EXPECT_THROW(View(e, part.start, part.count), CheckException) << part.start << " " << part.count;
  }
}

TEST(ExpressionTest, OneStorageForManyRows) {
  Expression e;
  e.addVariable(kSpace, 0);
  e.addCall(fn::the<fn::Sin>(), 1);
  const View first = e.take();
  e.addVariable(kSpace, 1);
  EXPECT_EQ(messageOf<CheckException>([&] { e.addCall(fn::the<fn::Add>(), 2); }),
            "'argumentCount' (which is 2) must be less or equal to 'open arguments' (which is 1).")
      << "a call does not reach into the row before";
  e.addCall(fn::the<fn::Cos>(), 1);
  const View second = e.take();
  for (int i = 0; i < 1000; ++i) e.addConstant(i);
  EXPECT_EQ(expressionText(first), "Sin(x0)") << "views stay valid while the storage grows";
  EXPECT_EQ(expressionText(second), "Cos(x1)");
  EXPECT_THROW(e.take(), CheckException);
  EXPECT_THROW(Expression().take(), CheckException);
  EXPECT_EQ(messageOf<CheckException>([&] { e.addCall(fn::the<fn::Divide>(), 3); }),
            "'tav:function:basic:Divide takes 3 arguments' must be true.");
}

TEST(ExpressionTest, AWalkOverADeepExpressionIsLinear) {
  constexpr int kDepth = 200000;
  Expression e;  // ((x0 + 1) + 1) + ...: a walk that searched for its arguments would take 4e10 steps
  e.addVariable(kSpace, 0);
  for (int i = 0; i < kDepth; ++i) {
    e.addConstant(1);
    e.addCall(fn::the<fn::Add>(), 2);
  }
  std::vector<View> work = {e.whole()};
  std::size_t visited = 0;
  while (!work.empty()) {
    const View view = work.back();
    work.pop_back();
    ++visited;
    view.forEachArgumentFromLast([&](const View& argument) { work.push_back(argument); });
  }
  EXPECT_EQ(visited, e.size());
  EXPECT_EQ(Evaluator()(e.whole(), Doubles{0.5}), kDepth + 0.5);
}

TEST(EvaluatorTest, LinearFunctionsAndVectorsInsideExpressions) {
  const Doubles point = {1, 2, -3};
  EXPECT_EQ(evaluate(Linear::owning(kSpace, {0, 2}, {2, 1}, 5), point), 4);
  EXPECT_EQ(expression(kSpace, "lin(2 x0 5)")->at(0).asLinear().constant, 0) << "the constant is the third argument";
  Evaluator evaluator;
  for (const auto& [text, value] : {std::pair{"SquareRoot(lin(2 x0 1 x2 5))", 2.0},
                                    {"Norm1(Vectorize(x0, x1, x2))", 6},
                                    {"NormInf(terms(1 x0 1 x2))", 3},
                                    {"Subtract(Polynomial(x1, [3 0 -1]), x0)", 10}}) {
    EXPECT_EQ(evaluator(expression(kSpace, text)->whole(), point), value) << text;
  }
  for (const char* outside : {"x3", "x-1"}) {
    EXPECT_THROW(evaluator(expression(kSpace, outside)->whole(), point), CheckException);
  }
}
