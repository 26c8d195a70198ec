// Filling a model with expressions, quadratic terms, logical constraints, sets and switched rows.

#include <gmock/gmock.h>

#include <cmath>
#include <functional>

#include "kavo/link.h"
#include "tests/kavo/fixture.h"
#include "tests/kavo/picture.h"

namespace kavo_test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

struct Node {
  int op;
  double content = 0;  // the value of a number, the index of everything else
};

// Expressions, in the arrays that the functions take.
class Trees {
 public:
  Trees(std::initializer_list<std::vector<Node>> trees) {
    for (const auto& tree : trees) {
      for (const Node& node : tree) {
        op_.push_back(node.op);
        index_.push_back(node.op == KAVO_OP_NUMBER ? -7 : static_cast<int>(node.content));  // -7: must be passed over
        value_.push_back(node.op == KAVO_OP_NUMBER ? node.content : NAN);
      }
      start_.push_back(op_.size());
    }
  }

  int addTo(trpRec* model, int* first = nullptr) const { return add(kavo_add_expressions, model, first); }
  int defineIn(trpRec* model, int* first = nullptr) const { return add(kavo_add_defined_variables, model, first); }

 private:
  template <class Function>
  int add(Function function, trpRec* model, int* first) const {
    return function(model, start_.size() - 1, start_.data(), op_.data(), index_.data(), value_.data(), first);
  }

  std::vector<std::size_t> start_{0};
  std::vector<int> op_, index_;
  std::vector<double> value_;
};

Node number(double value) { return {KAVO_OP_NUMBER, value}; }
Node variable(int column) { return {KAVO_OP_VARIABLE, static_cast<double>(column)}; }
Node defined(int number) { return {KAVO_OP_DEFINED_VARIABLE, static_cast<double>(number)}; }

// Columns a (binary), b (continuous), c (integer within [0, 1]), d (integer), without names; rows r0, r1; two
// objectives.
void fillFour(trpRec* model) {
  const unsigned char types[] = {KAVO_BINARY, KAVO_CONTINUOUS, KAVO_INTEGER, KAVO_INTEGER};
  const double upper[] = {5, 1, 1, 2};
  const char* names[] = {"r0", "r1"};
  const std::size_t start[] = {0, 1, 1};
  const int column = 1;
  const double value = 3;
  ASSERT_EQ(kavo_add_columns(model, 4, nullptr, upper, types, nullptr), KAVO_OK);
  ASSERT_EQ(kavo_add_rows(model, 2, nullptr, nullptr, start, &column, &value, names), KAVO_OK);
  for (const char* name : {"cost", "second"}) {
    ASSERT_EQ(kavo_add_objective(model, KAVO_MINIMIZE, 0, 0, nullptr, nullptr, name), KAVO_OK);
  }
}

TEST(BuildNonlinear, ExpressionsOfRowsObjectivesAndLogicalConstraints) {
  Model model;
  fillFour(model);
  int first = -1;
  ASSERT_EQ((Trees{{variable(3), {KAVO_OP_SQUARE, 9}}, {defined(0), number(0.5), {KAVO_OP_MAX, 2}}}).defineIn(model),
            KAVO_OK)
      << kavo_last_error();
  ASSERT_EQ((Trees{{defined(1), variable(0), {KAVO_OP_LESS_THAN}}, {variable(1), {KAVO_OP_SIN}}}).addTo(model, &first),
            KAVO_OK)
      << kavo_last_error();
  EXPECT_EQ(first, 2);
  const int logical[] = {2, 2}, elements[] = {1, 0}, expressions[] = {3, 3}, none = -1;
  const char* names[] = {nullptr, "named"};
  ASSERT_EQ(kavo_add_logical(model, 2, logical, names), KAVO_OK);
  ASSERT_EQ(kavo_set_expressions(model, KAVO_ROW, 2, elements, expressions), KAVO_OK);
  ASSERT_EQ(kavo_set_expressions(model, KAVO_ROW, 1, elements + 1, &none), KAVO_OK);
  ASSERT_EQ(kavo_set_expressions(model, KAVO_OBJECTIVE, 1, elements, expressions), KAVO_OK);
  const std::size_t start[] = {0, 0};
  ASSERT_EQ(kavo_add_rows(model, 1, nullptr, nullptr, start, nullptr, nullptr, nullptr), KAVO_OK);
  EXPECT_EQ(picture(model),
            ":0:5:1\n:0:1:0\n:0:1:2\n:0:2:2\n"
            "r0:-1e+20:1e+20 3*1\nr1:-1e+20:1e+20 e3\n:-1e+20:1e+20\n"
            "cost:0:0\nsecond:0:0 e3\n"
            "= e0 variable/3/0 square/0/0\n= e1 defined variable/0/0 number/0/0.5 max/2/0\n"
            "= e2 defined variable/1/0 variable/0/0 </0/0\n= e3 variable/1/0 sin/0/0\n"
            "= d0 e0\n= d1 e1\n"
            "= logical  e2\n= logical named e2\n");
  const char* name = nullptr;
  ASSERT_EQ(kavo_name(model, KAVO_LOGICAL, 0, &name), KAVO_OK);
  EXPECT_STREQ(name, "_slogcon[1]");
  ASSERT_EQ(kavo_name(model, KAVO_LOGICAL, 1, &name), KAVO_OK);
  EXPECT_STREQ(name, "named");
}

TEST(BuildNonlinear, QuadraticTermsOfOnePairAreSummed) {
  Model model;
  fillFour(model);
  const int elements[] = {1, 0}, first[] = {2, 0, 2, 1, 3, 3}, second[] = {0, 2, 2, 1, 1, 1};
  const double values[] = {1, 2, 5, 1, 4, -4};
  const std::size_t rows[] = {0, 4, 6}, objective[] = {0, 4};
  ASSERT_EQ(kavo_add_quadratic_terms(model, KAVO_ROW, 2, elements, rows, first, second, values), KAVO_OK);
  ASSERT_EQ(kavo_add_quadratic_terms(model, KAVO_OBJECTIVE, 1, elements, objective, first, second, values), KAVO_OK);
  EXPECT_THAT(picture(model), HasSubstr("r0:-1e+20:1e+20 3*1\nr1:-1e+20:1e+20 3*0*2 1*1*1 5*2*2\n"
                                        "cost:0:0\nsecond:0:0 3*0*2 1*1*1 5*2*2\n"));
  std::size_t count = 9;
  const int *x = nullptr, *y = nullptr;
  ASSERT_EQ(kavo_quadratic_terms(model, KAVO_OBJECTIVE, 1, &count, &x, &y, nullptr), KAVO_OK);
  EXPECT_THAT(std::vector(x, x + count), ElementsAre(0, 1, 2));
  EXPECT_THAT(std::vector(y, y + count), ElementsAre(2, 1, 2));
  ASSERT_EQ(kavo_quadratic_terms(model, KAVO_ROW, 0, &count, nullptr, nullptr, nullptr), KAVO_OK);
  EXPECT_EQ(count, 0u) << "what sums up to 0 is no term";
}

TEST(BuildNonlinear, SetsAndSwitchedRows) {
  Model model;
  fillFour(model);
  const unsigned char types[] = {2, 1}, values[] = {0, 1};
  const std::size_t start[] = {0, 3, 5};
  const int columns[] = {1, 3, 0, 2, 1}, rows[] = {1, 0}, switches[] = {0, 2};
  const double weights[] = {2, -1, 0.5, 7, 6};
  const char* names[] = {"s", nullptr};
  ASSERT_EQ(kavo_add_sets(model, 2, types, start, columns, weights, names), KAVO_OK) << kavo_last_error();
  ASSERT_EQ(kavo_add_sets(model, 1, types, start, columns, nullptr, nullptr), KAVO_OK) << kavo_last_error();
  ASSERT_EQ(kavo_set_indicators(model, 2, rows, switches, values), KAVO_OK) << kavo_last_error();
  ASSERT_EQ(kavo_set_indicators(model, 1, rows + 1, switches, nullptr), KAVO_OK);
  EXPECT_EQ(picture(model),
            ":0:5:1\n:0:1:0\n:0:1:2\n:0:2:2\n"
            "r0:-1e+20:1e+20 3*1 if 0=1\nr1:-1e+20:1e+20 if 0=0\n"
            "cost:0:0\nsecond:0:0\n"
            "= set s 2 3@-1 0@0.5 1@2\n= set  1 1@6 2@7\n= set  2 1@1 3@2 0@3\n");
  kavo_sizes sizes;
  ASSERT_EQ(kavo_get_sizes(model, &sizes), KAVO_OK);
  EXPECT_THAT((std::vector{sizes.expressions, sizes.nodes, sizes.defined_variables, sizes.quadratic_terms,
                           sizes.logical, sizes.sets, sizes.members, sizes.indicators}),
              ElementsAre(0, 0, 0, 0, 0, 3, 8, 2));
  const char* name = nullptr;
  ASSERT_EQ(kavo_name(model, KAVO_SET, 2, &name), KAVO_OK);
  EXPECT_STREQ(name, "_sset[3]");
}

void expectRefusedByFour(const std::vector<BadCall>& calls) { expectRefused(fillFour, calls); }

// The second of two expressions is wrong.
BadCall badTree(const char* message, const std::vector<Node>& tree, int status = KAVO_INVALID) {
  return {message, [tree](trpRec* m) { return Trees{{variable(0)}, tree}.addTo(m); }, status};
}

TEST(BuildNonlinear, BadExpressions) {
  const Node x = variable(0), one = number(1), two = number(2);
  expectRefusedByFour({
      badTree("expression 1 is empty", {}),
      badTree("expression 1, node 0: plus takes 2 operands, but there are 0", {{KAVO_OP_PLUS}}),
      badTree("expression 1, node 1: plus takes 2 operands, but there are 1", {x, {KAVO_OP_PLUS}}),
      badTree("node 2: max takes 3 operands, but there are 2", {x, x, {KAVO_OP_MAX, 3}}),
      badTree("node 0: max needs an operand, not 0", {{KAVO_OP_MAX, 0}}),
      badTree("node 0: max needs an operand, not -1", {{KAVO_OP_MAX, -1}}),
      badTree("node 2: the expression ends here, but 2 operands before are not used", {x, x, x}),
      badTree("node 0: there is no operator 10", {{10}}),
      badTree("node 0: there is no operator -1", {{-1}}),
      badTree("node 0: there is no operator 93", {{93}}),
      badTree("node 0: there is no column 4: the model has 4", {variable(4)}),
      badTree("node 0: there is no column -1", {variable(-1)}),
      badTree("node 0: there is no defined variable 0 that can be used here: 0 come before", {defined(0)}),
      badTree("node 0: the number inf must be finite", {number(INFINITY)}),
      badTree("node 0: the number nan must be finite", {number(NAN)}),
      badTree("node 2: operand 2 of power with constant exponent must be a number, not variable",
              {two, x, {KAVO_OP_POWER_CONSTANT_EXPONENT}}),
      badTree("operand 1 of power with constant base must be a number", {x, two, {KAVO_OP_POWER_CONSTANT_BASE}}),
      badTree("operand 2 of signed power must be a number", {x, x, {KAVO_OP_SIGNED_POWER}}),
      badTree("operand 2 of logarithm to a base must be a number", {two, x, {KAVO_OP_LOG_BASE}}),
      badTree("the base 1 of a logarithm must be above 0 and other than 1", {x, one, {KAVO_OP_LOG_BASE}}),
      badTree("the base -1 of a logarithm", {x, number(-1), {KAVO_OP_LOG_BASE}}),
      badTree("operand 2 of polynomial must be a number, not negate",
              {one, two, {KAVO_OP_NEGATE}, x, {KAVO_OP_POLYNOMIAL, 3}}),
      badTree("polynomial needs a coefficient", {x, {KAVO_OP_POLYNOMIAL, 1}}),
      badTree("operand 1 of piecewise-linear must be a number", {x, one, one, x, {KAVO_OP_PIECEWISE_LINEAR, 4}}),
      badTree("3 operands are not slope, breakpoint", {one, one, x, {KAVO_OP_PIECEWISE_LINEAR, 3}}),
      badTree("the breakpoints decrease from 2 to 1", {one, two, one, one, one, x, {KAVO_OP_PIECEWISE_LINEAR, 6}}),
      badTree("4 operands are not two or more points", {one, two, one, x, {KAVO_OP_PIECEWISE_LINEAR_POINTS, 4}}),
      badTree("3 operands are not two or more points", {one, two, x, {KAVO_OP_PIECEWISE_LINEAR_POINTS, 3}}),
      badTree("the points decrease from x = 2 to 1", {two, one, one, one, x, {KAVO_OP_PIECEWISE_LINEAR_POINTS, 5}}),
      badTree("the piece at the end of the points has no width at x = 2",
              {one, one, two, one, two, two, x, {KAVO_OP_PIECEWISE_LINEAR_POINTS, 7}}),
      badTree("strings can only come from a .nl file", {{KAVO_OP_STRING}}, KAVO_NOT_SUPPORTED),
      badTree("function call can only come from a .nl file", {x, {KAVO_OP_CALL, 1}}, KAVO_NOT_SUPPORTED),
  });
}

TEST(BuildNonlinear, BadUsesOfExpressions) {
  expectRefusedByFour({
      {"defined variable 1, node 0: there is no defined variable 1 that can be used here: 1 come before",
       [](trpRec* m) { return Trees{{variable(0)}, {defined(1)}}.defineIn(m); }},
      {"the operators, indices or values of the nodes are null",
       [](trpRec* m) {
         const std::size_t start[] = {0, 1};
         const int op = KAVO_OP_VARIABLE, index = 0;
         return kavo_add_expressions(m, 1, start, &op, &index, nullptr, nullptr);
       }},
      {"there is no expression 0: the model has 0",
       [](trpRec* m) {
         const int zero = 0;
         return kavo_add_logical(m, 1, &zero, nullptr);
       }},
      {"row 1 (\"r1\"): there is no expression 5",
       [](trpRec* m) {
         const int rows[] = {0, 1}, expressions[] = {-1, 5};
         return kavo_set_expressions(m, KAVO_ROW, 2, rows, expressions);
       }},
      {"only rows and objectives have",
       [](trpRec* m) {
         const int zero = 0, none = -1;
         return kavo_set_expressions(m, KAVO_COLUMN, 1, &zero, &none);
       }},
  });
}

// Sets that have more than a wrong member are wrong in their second one.
BadCall badSet(const char* message, const std::vector<int>& columns, const std::vector<double>& weights, int type = 1) {
  const auto call = [=](trpRec* m) {
    const unsigned char types[] = {2, static_cast<unsigned char>(type)};
    std::vector<int> all = {0, 1};
    std::vector<double> allWeights = {1, 2};
    all.insert(all.end(), columns.begin(), columns.end());
    allWeights.insert(allWeights.end(), weights.begin(), weights.end());
    const std::size_t start[] = {0, 2, all.size()};
    const char* names[] = {"good", "bad"};
    return kavo_add_sets(m, 2, types, start, all.data(), weights.empty() ? nullptr : allWeights.data(), names);
  };
  return {message, call};
}

// The second of two rows is switched by this column at this value.
BadCall badSwitch(const char* message, int row, int column, unsigned char value) {
  const auto call = [=](trpRec* m) {
    const int rows[] = {0, row}, columns[] = {0, column};
    const unsigned char values[] = {1, value};
    return kavo_set_indicators(m, 2, rows, columns, values);
  };
  return {message, call};
}

struct QuadraticTerm {
  int first, second;
  double value;
};

// The second of two elements gets two terms: columns 0 and 1, and this one.
BadCall badTerm(const char* message, int kind, int element, const QuadraticTerm& term) {
  const auto call = [=](trpRec* m) {
    const int elements[] = {0, element}, firsts[] = {3, 0, term.first}, seconds[] = {3, 1, term.second};
    const double values[] = {1, 1e20 * 0.75, term.value};
    const std::size_t start[] = {0, 1, 3};
    return kavo_add_quadratic_terms(m, kind, 2, elements, start, firsts, seconds, values);
  };
  return {message, call};
}

TEST(BuildNonlinear, BadSetsSwitchesAndTerms) {
  expectRefusedByFour({
      badSet("set 1 (\"bad\"): a set needs two members or more, not 1", {2}, {}),
      badSet("set 1 (\"bad\"): a set needs two members or more, not 0", {}, {}),
      badSet("set 1 (\"bad\"): column 4 of term 1 does not exist", {0, 4}, {}),
      badSet("set 1 (\"bad\"): column 2 is a member twice", {2, 0, 2}, {1, 2, 3}),
      badSet("set 1 (\"bad\"): column 0 and column 2 have the same weight 3", {2, 1, 0}, {3, 1, 3}),
      badSet("set 1 (\"bad\"): the weight nan of column 0 must be a finite number", {2, 0}, {3, NAN}),
      badSet("set 1 (\"bad\"): the type of a set is 1 or 2, not 3", {2, 0}, {}, 3),
      badSwitch("row 1 (\"r1\"): its switch, column 1, is not binary", 1, 1, 1),
      badSwitch("row 1 (\"r1\"): its switch, column 3, is not binary", 1, 3, 1),
      badSwitch("there is no element 4: the model has 4 of this kind", 1, 4, 1),
      badSwitch("row 1 (\"r1\"): the value that switches it on is 0 or 1, not 2", 1, 2, 2),
      badSwitch("there is no element 2: the model has 2 of this kind", 2, 0, 1),
      badTerm("row 1 (\"r1\"): column 4 of term 1 does not exist", KAVO_ROW, 1, {0, 4, 1}),
      badTerm("row 1 (\"r1\"): column -1 of term 1 does not exist", KAVO_ROW, 1, {-1, 0, 1}),
      badTerm("row 1 (\"r1\"): the coefficient 1.5e+20 of columns 0 and 1", KAVO_ROW, 1, {1, 0, 1e20 * 0.75}),
      badTerm("objective 1 (\"second\"): the coefficient nan of columns 0 and 0", KAVO_OBJECTIVE, 1, {0, 0, NAN}),
      badTerm("row 0 (\"r0\"): it has quadratic terms already", KAVO_ROW, 0, {0, 0, 1}),
      badTerm("there is no element 2", KAVO_OBJECTIVE, 2, {0, 0, 1}),
      badTerm("only rows and objectives have quadratic terms", KAVO_SET, 0, {0, 0, 1}),
  });
}

TEST(BuildNonlinear, DeepAndWideExpressions) {
  Model model;
  fillFour(model);
  constexpr int kSize = 1'000'000;
  std::vector<Node> chain{variable(1)}, sum;
  for (int i = 0; i < kSize; ++i) chain.push_back({KAVO_OP_SIN}), sum.push_back(variable(i % 4));
  sum.push_back({KAVO_OP_SUM, kSize});
  ASSERT_EQ((Trees{chain, sum}).addTo(model), KAVO_OK) << kavo_last_error();
  kavo_sizes sizes;
  ASSERT_EQ(kavo_get_sizes(model, &sizes), KAVO_OK);
  EXPECT_EQ(sizes.nodes, 2u * (kSize + 1));
}

}  // namespace
}  // namespace kavo_test
