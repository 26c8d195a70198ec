#include "tav/math/builder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tav/math/fn/catalogue.h"
#include "tests/tav/expression_text.h"

namespace fn = tav::math::fn;
using tav::math::Builder;

namespace {

// One element of a postfix array: "x3" a variable, a number a constant, "name/2" a call.
void hand(Builder& builder, const std::string& element) {
  const auto slash = element.find('/');
  if (element.front() == 'x') {
    builder.variable(std::stoi(element.substr(1)));
  } else if (slash != element.npos) {
    const auto* function = fn::find("tav:function:" + element.substr(0, slash));
    ASSERT_NE(function, nullptr) << element;
    builder.call(*function, std::stoi(element.substr(slash + 1)));
  } else {
    builder.constant(std::stod(element));
  }
}

}  // namespace

TEST(BuilderTest, FoldsCallsOfConstantsAndNothingElse) {
  struct Case {
    std::vector<std::string> elements;
    std::string built;
  };
  const std::vector<Case> cases{
      {{"2", "3", "basic:Multiply/2", "x0", "basic:Add/2"}, "Add(6, x0)"},
      {{"x1", "2", "3", "4", "basic:Add/3", "basic:Subtract/2"}, "Subtract(x1, 9)"},
      {{"2", "x0", "basic:Multiply/2"}, "Multiply(2, x0)"},
      // folding goes on upwards
      {{"2", "exponential:Square/1", "basic:Negate/1", "x0", "basic:Multiply/2"}, "Multiply(-4, x0)"},
      // no number comes out: the call stays
      {{"0", "exponential:Log/1"}, "Log(0)"},
      {{"1", "0", "basic:Divide/2"}, "Divide(1, 0)"},
      {{"1000", "exponential:Exp/1"}, "Exp(1000)"},
      {{"3", "4", "structural:Vectorize/2", "norm:Norm2/1"}, "Norm2(Vectorize(3, 4))"},
  };
  tav::math::Expression<double> storage;  // one storage for all: folding must not reach into the one before
  Builder builder(storage, 42);
  for (const Case& c : cases) {
    for (const auto& element : c.elements) hand(builder, element);
    EXPECT_EQ(expressionText(builder.take()), c.built);
  }
}

TEST(BuilderTest, RefusesACallWithTooFewArguments) {
  tav::math::Expression<double> storage;
  Builder builder(storage, 42);
  builder.constant(1);
  EXPECT_THROW(builder.call(fn::the<fn::Subtract>(), 2), tav::CheckException);
}
