#pragma once

#include <span>
#include <vector>

#include "tav/math/expression.h"

namespace tav::math {

// Computes expressions at a point. Keeps its stack from one expression to the next, so that evaluating many allocates
// nothing after the first few. Not for several threads at once.
class Evaluator {
 public:
  // The value at `point`, which holds the value of every variable by position (all variables are of one space). Outside
  // a function's domain the result is NaN or infinite. Raises tav::CheckException when a position is not below
  // point.size(). Takes time linear in the expression's size; no recursion.
  double operator()(const ExpressionView<double>& expression, std::span<const double> point);

 private:
  void push(double value);
  void pushLinear(const LinearFunction<double>& function, std::span<const double> point, bool asVector);
  void pushVector(std::span<const double> values);
  void call(const Call<double>& call);

  // The operands on the stack, one after another, and how many values each has: a vector has several. The operands of a
  // call are thereby one contiguous sequence of values.
  std::vector<double> values_;
  std::vector<std::size_t> widths_;
};

// A linear function at a point; positions are checked as above.
double evaluate(const LinearFunction<double>& function, std::span<const double> point);

}  // namespace tav::math
