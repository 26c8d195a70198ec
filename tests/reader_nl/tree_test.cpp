// Expressions, from the prefix order of the file to the postfix order of the model.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "tests/reader_nl/nl_text.h"

namespace kavo::reader {
namespace {

TEST(NlTree, Bodies) {
  struct Case {
    const char *tree, *postfix;
  };
  const Case cases[] = {
      {"v0\n", "v0"},
      {"o5\t#^\nv0\nn2\n", "v0 n2 power"},  // as it was written: a constant exponent is no operator of its own
      {"o1\no16\nv0\no3\nn1.5\nl-3\n", "v0 negate n1.5 n-3 divide minus"},
      {"o54\n3\nv0\ns7\no2\nv0\nv0\n", "v0 n7 v0 v0 times sum/3"},
      {"o54\n1\nv0\n", "v0 sum/1"},
      {"o11\n2\nv0\nn1\n", "v0 n1 min/2"},
      {"o35\no21\no23\nv0\nn1\no34\no24\nv0\nn0\nv0\no12\n1\nv0\n", "v0 n1 <= v0 n0 = not and v0 v0 max/1 if"},
      {"o72\no20\nn0\nv0\nn1\nn0\n", "n0 v0 or n1 n0 ==>"},
      {"o62\nn1\no59\n2\no28\nv0\nn1\no30\nv0\nn2\n", "n1 v0 n1 >= v0 n2 != count/2 atleast"},
      {"o60\n2\nn1\nv0\n", "n1 v0 numberof/2"},
      {"o64\n2\nn-1\nn3\ns2\nv0\n", "n-1 n3 n2 v0 piecewise-linear/4"},
      {"o76\nv0\nn3\n", "v0 n3 power with constant exponent"},
      {"o77\nv0\n", "v0 square"},
      {"o78\nn2\nv0\n", "n2 v0 power with constant base"},
      {"o70\n3\nn1\nn1\no73\nn1\nn0\n", "n1 n1 n1 n0 <==> forall/3"},
  };
  for (const Case& c : cases) {
    const Model model = fromText(withBody(c.tree));
    ASSERT_EQ(model.rows.expression.size(), 1u) << c.tree;
    EXPECT_EQ(postfix(model, model.rows.expression[0]), c.postfix);
  }
}

// Every operator number is either read with the operands that its arity tells, or refused.
TEST(NlTree, EveryOperatorNumber) {
  int taken = 0;
  for (int number = -1; number <= 90; ++number) {
    const std::string tree = fmt::format("o{}\n", number);
    if (operatorName(number).empty() || number > 78) {
      EXPECT_NE(failure(withBody(tree)), "") << tree;
      continue;
    }
    ++taken;
    if (number == 64) continue;  // has a form of its own
    const int operands = arity(number);
    std::string text = operands < 0 ? tree + "4\n" : tree;
    for (int i = 0; i < (operands < 0 ? 4 : operands); ++i) text += "n1\n";
    if (number == 65) text = "o61\n1\n" + text;  // is a string, maybe
    const Model model = fromText(withBody(text));
    const auto& nodes = model.expressions.op;
    EXPECT_NE(std::find(nodes.begin(), nodes.end(), static_cast<Operator>(number)), nodes.end());
    EXPECT_NE(failure(withBody(text.substr(0, text.size() - 3))), "") << "one operand is missing: " << text;
  }
  EXPECT_EQ(taken, 65);
}

TEST(NlTree, FunctionsAndStrings) {
  const std::string functions = "F0 1 -3 pick\nF1 0 1 twice\nF2 0 0 pi\n";
  const Model model = fromText(
      withBody("o0\nf0 3\nh5:a\nb:c\t# text\no65\nv0\nh0:\nn1\nf1 1\nv0\nf2 0\n", functions, {.functions = 3}));
  EXPECT_EQ(postfix(model, 0), "\"a\nb:c\" v0 \"\" n1 symbolic if v0 twice/1 pick/3 pi/0 plus");
  EXPECT_EQ(model.functions, (std::vector<std::string>{"pick", "twice", "pi"}));
  EXPECT_EQ(postfix(fromText(withBody("o61\n3\nh1:a\nh1:b\nv0\n")), 0), "\"a\" \"b\" v0 symbolic numberof/3");
}

TEST(NlTree, DefinedVariables) {
  const std::string defined =
      "V2 2 0\n0 3\n1 0\nn0\n"        // 3x: the linear part alone
      "V3 1 0\n0 1\no2\nv0\nv2\n"     // x + x d0
      "V4 2 1\n0 1\n1 2\no43\nv3\n";  // a sum of three
  const Model model =
      fromText(header({.variables = 2, .constraints = 1, .nonlinearConstraints = 1, .inConstraints = 1, .defined = 3}) +
               defined + "C0\nv4\nr\n3\nb\n3\n3\n");
  ASSERT_EQ(model.definedVariables.size(), 3u);
  EXPECT_EQ(postfix(model, model.definedVariables[0]), "n3 v0 times");
  EXPECT_EQ(postfix(model, model.definedVariables[1]), "v0 v0 d0 times plus");
  EXPECT_EQ(postfix(model, model.definedVariables[2]), "v0 n2 v1 times d1 log sum/3");
  EXPECT_EQ(postfix(model, model.rows.expression[0]), "d2");
}

TEST(NlTree, ConstantBodiesAreNoExpressions) {
  const Counts counts = {.variables = 1, .constraints = 3, .objectives = 2, .logical = 1, .gradients = 1};
  const Model model = fromText(header(counts) + "r\n0 1 2\n1 5\n3\nC0\nl5\nC1\nn-0.5\nC2\ns4\nL0\nn1\n" +
                               "O1 1\nn2.5\nO0 0\nn0\nb\n3\nG1 1\n0 4\n");
  EXPECT_TRUE(model.rows.expression.empty());
  EXPECT_EQ(model.rows.lower[0], -4);
  EXPECT_EQ(model.rows.upper[0], -3);
  EXPECT_EQ(model.rows.upper[1], 5.5);
  EXPECT_EQ(model.rows.upper[2], -model.rows.lower[2]);
  EXPECT_EQ(model.objectives[1].constant, 2.5);
  EXPECT_EQ(model.objectives[1].expression, -1);
  EXPECT_EQ(model.objectives[1].value, std::vector<double>{4});
  EXPECT_EQ(model.objectives[0].constant, 0);
  // A logical constraint is its expression, whatever that is.
  EXPECT_EQ(postfix(model, model.logical.at(0)), "n1");
}

TEST(NlTree, DeepTrees) {
  constexpr std::size_t kDepth = 1'000'000;
  std::string unary, left, right;
  for (std::size_t i = 0; i < kDepth; ++i) unary += "o16\n", left += "o0\n", right += "o0\nv0\n";
  unary += "v0\n", left += "v0\n", right += "v0\n";
  for (std::size_t i = 0; i < kDepth; ++i) left += "n1\n";
  const std::pair<const std::string*, std::size_t> cases[] = {
      {&unary, kDepth + 1}, {&left, 2 * kDepth + 1}, {&right, 2 * kDepth + 1}};
  for (const auto& [tree, nodes] : cases) {
    const Model model = fromText(withBody(*tree));
    EXPECT_EQ(model.expressions.op.size(), nodes);
    EXPECT_NE(model.expressions.op.back(), KAVO_OP_VARIABLE);
  }
}

}  // namespace
}  // namespace kavo::reader
