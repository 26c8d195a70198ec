#pragma once

#include <optional>
#include <vector>

#include "tav/math/symbol.h"

namespace grb {

// A sub-expression as one summand of a sum, added or taken away.
struct Summand {
  tav::math::ExpressionView<double> view;
  bool isNegated = false;
};

// The summands of the sum at the root of an expression, in their order: looks through calls of Add, Subtract and Negate
// that stand one inside the other. An expression whose root is none of them is its own only summand. Without recursion,
// in time linear in the number of summands and of the calls looked through.
class Summands {
 public:
  explicit Summands(const tav::math::ExpressionView<double>& expression) : open_{{expression}} {}

  // The next one, nothing when there are no more.
  std::optional<Summand> next();

 private:
  std::vector<Summand> open_;  // the next one last
};

// factor * view.
struct Multiple {
  double factor;
  tav::math::ExpressionView<double> view;
};

// A product of something and a constant, or a quotient by a constant other than 0, as a multiple; any other expression
// is once itself.
Multiple multipleOf(const tav::math::ExpressionView<double>& expression);

// The linear function, with its whole constant, when the expression is a call of one that is well formed.
std::optional<tav::math::LinearFunction<double>> linearCall(const tav::math::ExpressionView<double>& expression);

}  // namespace grb
