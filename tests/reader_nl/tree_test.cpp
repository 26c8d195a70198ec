// Expressions, from the prefix order of the file to the postfix order of the model; most are compared with what the
// AMPL library reads (second_opinion_test.cpp).
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "tests/reader_nl/nl_text.h"

namespace kavo::reader {
namespace {

// What the AMPL library would not tell: how a constant power is kept, and that constants are no expressions.
TEST(NlTree, StaysAsItIsWritten) {
  const std::pair<const char*, const char*> cases[] = {
      {"o5\nv0\nn2\n", "v0 n2 power"},
      {"o76\nv0\nn3\n", "v0 n3 power with constant exponent"},
      {"o77\nv0\n", "v0 square"},
      {"o78\nn2\nv0\n", "n2 v0 power with constant base"},
      {"o3\t#/\ns7\nl-3\n", "n7 n-3 divide"},
      {"o61\n1\nh3:a\nb\t# text\n", "\"a\nb\" symbolic numberof/1"},
      {"o61\n1\nh0:\n", "\"\" symbolic numberof/1"},
      {"o54\n1\nv0\n", "v0 sum/1"},
      {"o11\n2\nv0\nn1\n", "v0 n1 min/2"},
  };
  for (const auto& [tree, text] : cases) EXPECT_EQ(postfix(fromText(withBody(tree)), 0), text);
  const Model constant = fromText(withBody("n4\n"));
  EXPECT_TRUE(constant.rows.expression.empty());
  EXPECT_EQ(constant.rows.upper[0], 1);
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
