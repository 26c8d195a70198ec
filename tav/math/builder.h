#pragma once

#include <cstdint>

#include "tav/math/expression.h"

namespace tav::math {

// Builds expressions from the elements of somebody else's postfix arrays, handed over in their order, and replaces a
// call whose arguments are all constants by its value. A value that is not finite is no number to go on with: such a
// call stays as it is, for those who can say where it comes from.
class Builder {
 public:
  // Appends to `target`, which must outlive the builder. space: the variable space of all variables.
  Builder(Expression<double>& target, std::uint64_t space) : target_(target), space_(space) {}

  void variable(int position) { target_.addVariable(space_, position); }
  void constant(double value) { target_.addConstant(value); }
  // A call of the last `argumentCount` sub-expressions. Raises tav::CheckException as Expression::addCall does.
  void call(const fn::Abstract<double>& function, int argumentCount);
  // Ends one expression.
  ExpressionView<double> take() { return target_.take(); }

 private:
  Expression<double>& target_;
  std::uint64_t space_;
};

}  // namespace tav::math
