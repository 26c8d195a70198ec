#include <gmock/gmock.h>

#include "grb/adder/lin_con_adder.h"
#include "grb/adder/var_adder.h"
#include "grb/nonlinear/gen_constr.h"
#include "grb/nonlinear/nonlin_con_adder.h"
#include "tests/grb/blocks.h"
#include "tests/grb/listeners.h"
#include "tests/tav/expressions.h"
#include "tests/tav/thrown.h"

namespace grb {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using Q = tav::opt::RowQuantity;

constexpr const char* kNoConstraint = "Constraint not supported";

struct Row {
  int type;
  std::string text;
};

class NonlinearRowsTest : public testing::Test, protected OpenRecord {
 protected:
  NonlinearRowsTest() : OpenRecord(5) { data->callbacks.log = log; }

  tav::opt::ConstraintContainer rows(const std::vector<Row>& given, const std::vector<Given>& more = {},
                                     const OwnGroup& own = {}) const {
    std::vector<int> types;
    std::vector<Symbol> functions;
    for (const Row& row : given) {
      types.push_back(row.type);
      functions.push_back(symbol(data->variableSpace(), row.text));
    }
    return expressions(types, functions, more, own);
  }
  // One row, which goes straight to the function constraints.
  tav::opt::ConstraintContainer definition(int type, const std::string& text) const {
    return rows({{type, text}}, {}, {{"trynonlin", values<int>({0})}});
  }
  // The calls since the last time, without those at the head of a block.
  Calls blockCalls() const {
    Calls calls = gurobi->takeCalls();
    const auto begin = std::find(calls.begin(), calls.end(), kReadCount);
    calls.erase(calls.begin(), begin == calls.end() ? calls.begin() : begin + 1);
    return calls;
  }

  std::shared_ptr<TextLog> log = std::make_shared<TextLog>();
  NonlinConAdder adder{data};
};

TEST_F(NonlinearRowsTest, SendsLinearTermsInARowAndTheRestAsATree) {
  const struct Case {
    Row row;
    const char* linear;  // of the row: number of terms, positions, coefficients, sense, right-hand side
    const char* tree;    // number of nodes, opcodes, data, parents
  } cases[]{
      {{1, "Add(x0, Sin(x1), 3)"}, "1, [0], [1], 'L', -3", "2, [9, 1], [-1, 1], [-1, 0]"},
      {{0, "Sin(x1)"}, "0, null, null, 'G', 0", "2, [9, 1], [-1, 1], [-1, 0]"},
      {{2, "Subtract(Subtract(lin(2 x0 1 x1 5), Multiply(3, x2)), Add(4, Negate(Exp(x1))))"},
       "3, [0, 1, 2], [2, 1, -3], 'E', -1",
       "2, [13, 1], [-1, 1], [-1, 0]"},
      {{2, "Add(Sin(x0), Divide(lin(2 x3 4), -2), Negate(Multiply(x1, x2)), Multiply(lin(1 x0), 7))"},
       "2, [3, 0], [-1, 7], 'E', 2",
       "7, [2, 9, 1, 6, 4, 1, 1], [-1, -1, 0, -1, -1, 1, 2], [-1, 0, 1, 0, 3, 4, 4]"},
      {{2, "Subtract(7, Sin(x0))"}, "0, null, null, 'E', -7", "3, [6, 9, 1], [-1, -1, 0], [-1, 0, 1]"},
      // nothing linear: as it stands
      {{2, "Subtract(Sin(x0), Cos(x1))"},
       "0, null, null, 'E', 0",
       "5, [3, 9, 1, 10, 1], [-1, -1, 0, -1, 1], [-1, 0, 1, 0, 3]"},
      // nothing else
      {{0, "Subtract(x0, lin(1 x0 1))"}, "2, [0, 0], [1, -1], 'G', 1", "1, [0], [0], [-1]"},
  };
  for (const Case& c : cases) {
    const int variables = data->variables.count();
    const int row = data->linearRows.count();
    EXPECT_THAT(positionsOf(adder.add(rows({c.row}, {{Q::name, values<const char*>({"r"})}}))), SizeIs(1));
    EXPECT_THAT(blockCalls(),
                ElementsAre(fmt::format(R"(GRBaddconstr(m1, {}, "r"))", c.linear),
                            fmt::format("GRBaddvar(m1, 1, [{}], [1], 0, -1e+100, 1e+100, 'C', null)", row),
                            fmt::format(R"(GRBaddgenconstrNL(m1, "r", {}, {}))", variables, c.tree)))
        << c.row.text;
  }
  EXPECT_THAT(log->text, IsEmpty());
}

TEST_F(NonlinearRowsTest, CountsAuxiliariesAndTakesEveryKindOfFunction) {
  const auto space = data->variableSpace();
  std::vector<Symbol> functions{symbol(space, "Sin(lin(1 x0 1 x1))"), Symbol::ofVariable(space, 2),
                                Symbol::ofConstant(4),
                                Symbol::ofLinear(tav::math::LinearFunction<double>::owning(space, {1}, {3}, -2))};
  const auto given = rows({{2, "1"}, {2, "1"}, {2, "1"}, {2, "1"}}, {{Q::function, values(functions)}});
  EXPECT_THAT(positionsOf(adder.add(given)), ElementsAre(0, 1, 2, 3));
  const Calls calls = blockCalls();
  EXPECT_THAT(calls, SizeIs(2 + 4 * 3));
  EXPECT_EQ(calls[4], R"(GRBaddgenconstrNL(m1, "", 6, 2, [9, 1], [-1, 5], [-1, 0]))");
  EXPECT_EQ(calls[5], R"(GRBaddconstr(m1, 1, [2], [1], 'E', 0, ""))");
  EXPECT_EQ(calls[8], R"(GRBaddconstr(m1, 0, null, null, 'E', -4, ""))");
  EXPECT_EQ(calls[11], R"(GRBaddconstr(m1, 1, [1], [3], 'E', 2, ""))");
  EXPECT_EQ(data->variables.count(), 5 + 1 + 4);
  EXPECT_EQ(data->linearRows.count(), 1 + 4);
  EXPECT_EQ(data->generalConstraints.size(), 4U);

  // What comes later gets the positions that are left.
  EXPECT_THAT(positionsOf(VarAdder(data).add(plainVariables(1))), ElementsAre(10));
  EXPECT_THAT(positionsOf(LinConAdder(data).add(grb::functions(space, {{2, {10}, {1}}}))), ElementsAre(5));
  EXPECT_THAT(positionsOf(adder.add(rows({{2, "Sin(x10)"}}))), ElementsAre(4));
}

TEST_F(NonlinearRowsTest, RecognisesDefinitionsHoweverTheyAreWritten) {
  for (const char* text : {
           "Subtract(x0, Exp(x1))",
           "Subtract(Exp(x1), x0)",
           "Add(Negate(x0), Exp(x1))",
           "Add(x0, Negate(Exp(x1)))",
           "Negate(Subtract(x0, Exp(x1)))",
           "Add(lin(-1 x0), Exp(x1))",
           "Add(Negate(Exp(lin(1 x1))), lin(1 x0))",
           "Subtract(Subtract(x0, Exp(x1)), 0)",
           "Add(0, Multiply(-1, x0), Exp(x1))",
           "Add(x0, Multiply(Exp(x1), -1))",
       }) {
    EXPECT_THAT(positionsOf(adder.add(definition(2, text))), SizeIs(1));
    EXPECT_THAT(blockCalls(), ElementsAre(R"(GRBaddgenconstrExp(m1, "", 1, 0, ""))")) << text;
  }
  for (const char* text : {
           "Add(x0, Exp(x1))",
           "Subtract(Multiply(2, x0), Exp(x1))",
           "Subtract(Multiply(2, x0), Multiply(2, Exp(x1)))",
           "Subtract(lin(1 x0 1), Exp(x1))",
           "Subtract(lin(1 x0 1 x2), Exp(x1))",
           "Add(Negate(x0), Exp(x1), 1)",
           "Add(Negate(x0), Multiply(2, Exp(x1)))",
           "Subtract(Add(x0, x2), Exp(x1))",
           "Subtract(x0, Add(Exp(x1), Exp(x2)))",
           "Subtract(x0, Exp(Sin(x1)))",
           "Subtract(x0, Exp(lin(2 x1)))",
           "Subtract(x0, tanh(x1))",
           "Exp(x1)",
           "Subtract(x0, x1)",
           "x0",
           "Subtract(x0, Max(x1, Sin(x2)))",
           "Subtract(x0, Norm2(Vectorize(x1, Sin(x2))))",
           "Subtract(x0, Norm2(lin(1 x1)))",
       }) {
    EXPECT_EQ(messageOf<tav::opt::SupportException>([&] { adder.add(definition(2, text)); }), kNoConstraint) << text;
    EXPECT_THAT(blockCalls(), IsEmpty());
  }
}

TEST_F(NonlinearRowsTest, SendsEachTemplateWithWhatItCaptures) {
  const struct Case {
    const char* call;  // what x0 is
    const char* sent;
  } cases[]{
      {"Abs(x1)", R"(Abs(m1, "r", 0, 1))"},
      {"Log(x1)", R"(Log(m1, "r", 1, 0, ""))"},
      {"Exp(x1)", R"(Exp(m1, "r", 1, 0, ""))"},
      {"Sin(x1)", R"(Sin(m1, "r", 1, 0, ""))"},
      {"Cos(x1)", R"(Cos(m1, "r", 1, 0, ""))"},
      {"Tan(x1)", R"(Tan(m1, "r", 1, 0, ""))"},
      {"Sigmoid(x1)", R"(Logistic(m1, "r", 1, 0, ""))"},
      {"Norm1(terms(1 x1 1 x2))", R"(Norm(m1, "r", 0, 2, [1, 2], 1))"},
      {"Norm2(Vectorize(x3, x2))", R"(Norm(m1, "r", 0, 2, [3, 2], 2))"},
      {"NormInf(x1)", R"(Norm(m1, "r", 0, 1, [1], 1e+100))"},
      {"LogBase(x1, 2.5)", R"(LogA(m1, "r", 1, 0, 2.5, ""))"},
      {"Power(3, x1)", R"(ExpA(m1, "r", 1, 0, 3, ""))"},
      {"Power0(0.5, x1)", R"(ExpA(m1, "r", 1, 0, 0.5, ""))"},
      {"Power(x1, 3)", R"(Pow(m1, "r", 1, 0, 3, ""))"},
      {"Power0(x1, -1)", R"(Pow(m1, "r", 1, 0, -1, ""))"},
      {"PowerConst(x1, 2)", R"(Pow(m1, "r", 1, 0, 2, ""))"},
      {"Polynomial(x1, [3 2 1])", R"(Poly(m1, "r", 1, 0, 3, [3, 2, 1], ""))"},
      {"Polynomial(x1, Vectorize(3, 0))", R"(Poly(m1, "r", 1, 0, 2, [3, 0], ""))"},
      {"Min(x1, x2)", R"(Min(m1, "r", 0, 2, [1, 2], 1e+100))"},
      {"Max(x1, lin(1 x2), x3)", R"(Max(m1, "r", 0, 3, [1, 2, 3], -1e+100))"},
      {"BoolAnd(x1, x2)", R"(And(m1, "r", 0, 2, [1, 2]))"},
      {"BoolOr(x1)", R"(Or(m1, "r", 0, 1, [1]))"},
  };
  for (const Case& c : cases) {
    const auto given = rows({{2, fmt::format("Subtract(x0, {})", c.call)}}, {{Q::name, values<const char*>({"r"})}},
                            {{"trynonlin", values<int>({0})}});
    adder.add(given);
    EXPECT_THAT(blockCalls(), ElementsAre(std::string("GRBaddgenconstr") + c.sent)) << c.call;
  }
  EXPECT_EQ(data->nonlinearRows.count(), static_cast<int>(std::size(cases)));
  EXPECT_EQ(data->generalConstraints.size(), std::size(cases));
  EXPECT_EQ(data->variables.count(), 5);
  EXPECT_THAT(log->text, IsEmpty());
}

TEST_F(NonlinearRowsTest, RefusesWhatATemplateCannotTakeInTheOrderOfTheChecks) {
  constexpr const char* kInput = "Input not supported";
  constexpr const char* kParameter = "Parameter not supported";
  constexpr const char* kDomain = "Domain type not supported.";
  const struct Case {
    Row row;
    const char* message;
  } cases[]{
      {{1, "Subtract(x0, Exp(x1))"}, kDomain},
      {{0, "Subtract(x0, Norm1(x1))"}, kDomain},
      {{0, "Subtract(x0, Min(x1))"}, kDomain},
      {{1, "Subtract(x0, Polynomial(x1, [1]))"}, kDomain},
      {{1, "Subtract(y0, Exp(x1))"}, kInput},
      {{2, "Subtract(x0, Exp(y1))"}, kInput},
      {{2, "Subtract(x0, Exp(3))"}, kInput},
      {{2, "Subtract(x0, Norm2(terms(2 x1)))"}, kInput},
      {{2, "Subtract(x0, Norm2(terms(1 x1 3)))"}, kInput},
      {{2, "Subtract(x0, Norm2(Vectorize(x1, 4)))"}, kInput},
      {{2, "Subtract(x0, Norm2(Vectorize(y1, x2)))"}, kInput},
      {{2, "Subtract(x0, Norm2([1 2]))"}, kInput},
      {{2, "Subtract(x0, Max(x1, 3))"}, kInput},
      {{1, "Subtract(x0, Power(x1, x2))"}, kParameter},
      {{2, "Subtract(x0, Power(x1, nan))"}, kParameter},
      {{2, "Subtract(x0, Power(-2, x1))"}, kParameter},
      {{2, "Subtract(x0, LogBase(x1, 0))"}, kParameter},
      {{2, "Subtract(x0, LogBase(x1, 1))"}, kParameter},
      {{2, "Subtract(x0, Polynomial(x1, []))"}, kParameter},
      {{2, "Subtract(x0, Polynomial(x1, Vectorize(1, x2)))"}, kParameter},
      {{2, "Subtract(x0, Polynomial(x1, [1 inf]))"}, kParameter},
      {{2, "Subtract(x0, Exp(x5))"}, "Element 0 of the block: there is no variable 5."},
      {{2, "Subtract(x0, Norm2(terms(1 x9)))"}, "Element 0 of the block: there is no variable 9."},
      {{3, "Subtract(x0, Exp(x1))"}, kDomain},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(messageOf([&] { adder.add(definition(c.row.type, c.row.text)); }), c.message) << c.row.text;
    EXPECT_THAT(blockCalls(), IsEmpty()) << c.row.text;
  }
  const auto error = thrown([&] { adder.add(definition(1, "Subtract(x0, Exp(x1))")); });
  EXPECT_EQ(error.location().file(), "grb/nonlinear");
}

TEST_F(NonlinearRowsTest, AFamilyHasNoKindsBeyondItsOwn) {
  const auto space = data->variableSpace();
  const GenConstrTarget target{data->model.get(), "", space, 2};
  const auto x = Symbol::ofVariable(space, 0);
  const auto one = Symbol::ofConstant(3);
  const auto vector = Symbol::ofLinear(tav::math::LinearFunction<double>::owning(space, {1}, {1}, 0));
  const auto list = Symbol::ofVector(std::make_shared<tav::math::Vector<double>>(std::vector<double>{1}));
  for (const int kind : {-1, 7}) EXPECT_EQ(messageOf([&] { addGenConstr1(target, kind, x, x); }), kNoConstraint);
  for (const int kind : {-1, 3}) EXPECT_EQ(messageOf([&] { addGenConstr2(target, kind, x, vector); }), kNoConstraint);
  for (const int kind : {-1, 3}) EXPECT_EQ(messageOf([&] { addGenConstr3(target, kind, x, x, one); }), kNoConstraint);
  for (const int kind : {-1, 1}) EXPECT_EQ(messageOf([&] { addGenConstr4(target, kind, x, x, list); }), kNoConstraint);
  for (const int kind : {-1, 4}) {
    EXPECT_EQ(messageOf([&] { addGenConstr5(target, kind, x, {&x, 1}); }), kNoConstraint);
  }
  EXPECT_THAT(gurobi->calls(), IsEmpty());
}

TEST_F(NonlinearRowsTest, TriesEachRowAsItIsTold) {
  const Row row{2, "Subtract(x0, Exp(x1))"};
  adder.add(rows({row, row, row}, {}, {{"trynonlin", values<int>({0, 1, 2})}}));
  EXPECT_EQ(gurobi->count(Fn::GRBaddgenconstrNL), 1);
  EXPECT_EQ(gurobi->count(Fn::GRBaddgenconstrExp), 2);
  gurobi->takeCalls();
  adder.add(rows({row, row}, {}, {{"trynonlin", onlyAt(1, 0, 2)}}));
  EXPECT_EQ(gurobi->count(Fn::GRBaddgenconstrNL), 1) << "a row without a word is tried";
  EXPECT_EQ(gurobi->count(Fn::GRBaddgenconstrExp), 1);
  EXPECT_EQ(log->text, "");

  // What has no tree is told, and looked at as a function.
  gurobi->takeCalls();
  adder.add(rows({{2, "Subtract(x0, Abs(x1))"}}));
  EXPECT_THAT(blockCalls(), ElementsAre(R"(GRBaddgenconstrAbs(m1, "", 0, 1))"));
  EXPECT_THAT(log->text,
              testing::MatchesRegex(
                  "Cannot add General Nonlinear Constraints \\(Support: Function not supported: tav:function:basic:Abs "
                  "\\(grb/nonlinear:[0-9]+\\)\\). Trying to detect Gurobi General Simple and Function constraints\n"));

  // Rows before a refused one stay, and are counted.
  EXPECT_EQ(messageOf([&] { adder.add(rows({{2, "Sin(x0)"}, {2, "Sin(Abs(x1))"}, {2, "Sin(x0)"}})); }), kNoConstraint);
  EXPECT_THAT(positionsOf(adder.add(rows({{2, "Sin(x0)"}}))), ElementsAre(7));
}

class FailingRow : public NonlinearRowsTest {
 protected:
  // Makes the nth call of a row fail; the calls are the look at the model, a row and a variable for the linear
  // function, the row, its variable, and the tree. keeps: the library keeps what is queued, against its habit.
  void addWithFailure(int nth, bool keeps) {
    for (const Fn function : {Fn::GRBaddconstr, Fn::GRBaddvar, Fn::GRBaddgenconstrNL}) {
      if (!keeps) break;
      gurobi->onCall(function, [this] {
        gurobi->scriptAttr("NumVars", data->variables.count());
        gurobi->scriptAttr("NumConstrs", data->linearRows.count());
      });
    }
    gurobi->failAnyCall(nth, 10003, "refused");
    adder.add(rows({{2, "Subtract(x0, Exp(lin(1 x1)))"}}));
  }
};

TEST_F(FailingRow, GoesOnAsAFunctionOnlyWhenNothingWasLost) {
  for (const bool keeps : {false, true}) {
    for (int nth = 1; nth <= 6; ++nth) {
      SCOPED_TRACE(testing::Message() << "call " << nth << (keeps ? ", kept" : ", discarded"));
      gurobi->unscript("NumVars");
      gurobi->unscript("NumConstrs");
      data->model->clear();
      data->clear();
      load(5);
      log->text.clear();
      if (nth == 2 || (keeps && nth > 2)) {
        EXPECT_NO_THROW(addWithFailure(nth, keeps));
        EXPECT_THAT(blockCalls().back(), HasSubstr("GRBaddgenconstrExp("));
        EXPECT_THAT(log->text, HasSubstr("Constraints (Gurobi: refused [GRBadd"));
        EXPECT_EQ(data->nonlinearRows.count(), 1);
        EXPECT_EQ(data->linearRows.count(), nth < 3 ? 0 : nth < 5 ? 1 : 2);
        EXPECT_EQ(data->variables.count(), nth < 4 ? 5 : nth < 6 ? 6 : 7);
      } else {
        EXPECT_EQ(messageOf<GurobiException>([&] { addWithFailure(nth, keeps); }), "refused");
        EXPECT_EQ(log->text, "");
        if (nth == 1) continue;
        EXPECT_THAT(messageOf([&] { VarAdder(data).add(plainVariables(1)); }), HasSubstr("discarded parts"));
      }
    }
  }
}

TEST_F(FailingRow, OfAFunctionEndsTheBlock) {
  gurobi->failCall(Fn::GRBaddgenconstrExp, 10003, "refused");
  EXPECT_EQ(messageOf<GurobiException>([&] { adder.add(definition(2, "Subtract(x0, Exp(x1))")); }), "refused");
  EXPECT_EQ(data->generalConstraints.size(), 0U);
  EXPECT_THAT(positionsOf(adder.add(definition(2, "Subtract(x0, Exp(x1))"))), ElementsAre(0));
}

TEST_F(NonlinearRowsTest, RefusesUnknownDomainTypesBeforeAnyCall) {
  EXPECT_EQ(messageOf([&] { adder.add(rows({{2, "Sin(x0)"}, {3, "Sin(x0)"}})); }), "Domain type not supported.");
  EXPECT_EQ(adder.add(rows({})).size(), 0);
  EXPECT_THAT(gurobi->calls(), IsEmpty());
}

}  // namespace
}  // namespace grb
