#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "tav/attr/lib/container.h"
#include "tav/math/evaluator.h"
#include "tav/math/fn/catalogue.h"
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

// The expression in prefix notation, as a walk from the root sees it.
std::string text(const View& view) {
  const Symbol root = view.root();
  if (root.is(Kind::kVariable)) return "x" + std::to_string(root.asVariable().position);
  if (root.is(Kind::kConstant)) return std::to_string(static_cast<int>(root.asConstant()));
  std::string arguments;
  view.forEachArgumentFromLast([&](const View& argument) {
    const std::string inner = text(argument);
    arguments = arguments.empty() ? inner : inner + "," + arguments;
  });
  const std::string_view identifier = root.asCall().function->identifier();
  return std::string(identifier.substr(identifier.rfind(':') + 1)) + "(" + arguments + ")";
}

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

TEST(SymbolTest, TravelsInAContainer) {
  using Rows = tav::attr::lib::Container<Symbol, std::vector>;
  const auto rows = tav::attr::Container<Symbol>::make<Rows>(
      std::vector<Symbol>{Symbol::ofConstant(1), Symbol::ofVariable(kSpace, 8)});
  std::vector<Symbol> read(2);
  rows.getAll(std::span(read));
  EXPECT_EQ(read[1].asVariable().position, 8);
  EXPECT_EQ(read[1].asVariable().space, kSpace);
}

TEST(ExpressionTest, ArgumentsInOrder) {
  Expression e;  // sin(x3) - (x0 + 2 + exp(x1))
  e.addVariable(kSpace, 3);
  e.addCall(fn::the<fn::Sin>(), 1);
  e.addVariable(kSpace, 0);
  e.addConstant(2);
  e.addVariable(kSpace, 1);
  e.addCall(fn::the<fn::Exp>(), 1);
  e.addCall(fn::the<fn::Add>(), 3);
  e.addCall(fn::the<fn::Subtract>(), 2);
  const View whole = e.whole();
  EXPECT_EQ(text(whole), "Subtract(Sin(x3),Add(x0,2,Exp(x1)))");
  EXPECT_EQ(whole.argumentStarts(2), (Starts{0, 2}));
  EXPECT_EQ(whole.argumentStarts(2, true), (Starts{0, 2, 7}));
  EXPECT_EQ(whole.argumentStarts(1), Starts{0});
  EXPECT_EQ(whole.argumentStarts(1, true), (Starts{0, 2}));
  const View sum(e, 2, 5);
  EXPECT_EQ(text(sum), "Add(x0,2,Exp(x1))");
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
  EXPECT_EQ(text(first), "Sin(x0)") << "views stay valid while the storage grows";
  EXPECT_EQ(text(second), "Cos(x1)");
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
  const Linear function = Linear::owning(kSpace, {0, 2}, {2, 1}, 5);  // 2*1 - 3 + 5 = 4
  EXPECT_EQ(evaluate(function, point), 4);
  Evaluator evaluator;
  Expression root;
  root.addLinearCall(function);
  root.addCall(fn::the<fn::SquareRoot>(), 1);
  EXPECT_EQ(root.size(), 5U);
  EXPECT_EQ(root.at(0).asLinear().constant, 0) << "the constant is the third argument";
  EXPECT_EQ(evaluator(root.whole(), point), 2);
  Expression norm;
  for (int i = 0; i < 3; ++i) norm.addVariable(kSpace, i);
  norm.addCall(fn::the<fn::Vectorize>(), 3);
  norm.addCall(fn::the<fn::Norm1>(), 1);
  EXPECT_EQ(evaluator(norm.whole(), point), 6);
  Expression linearNorm;
  linearNorm.addLinear(Linear::owning(kSpace, {0, 2}, {1, 1}, 0));
  linearNorm.addCall(fn::the<fn::NormInf>(), 1);
  EXPECT_EQ(evaluator(linearNorm.whole(), point), 3);
  Expression polynomial;  // 3 x1^2 - 1, minus x0
  polynomial.addVariable(kSpace, 1);
  polynomial.addVector(std::make_shared<tav::math::Vector<double>>(Doubles{3, 0, -1}));
  polynomial.addCall(fn::the<fn::Polynomial>(), 2);
  polynomial.addVariable(kSpace, 0);
  polynomial.addCall(fn::the<fn::Subtract>(), 2);
  EXPECT_EQ(evaluator(polynomial.whole(), point), 10);
  for (const int position : {3, -1}) {
    Expression outside;
    outside.addVariable(kSpace, position);
    EXPECT_THROW(evaluator(outside.whole(), point), CheckException);
  }
}
