#pragma once

#include <memory>
#include <span>

#include "brel/rewrite/own_expressions.h"
#include "brel/user_model.h"

namespace brel::rewrite {

// An objective of the user's model as a function of the user's columns: its linear, quadratic and nonlinear terms and
// its constant. Made once, evaluated at many points; the host's arrays must outlive it.
class ObjectiveFunction {
 public:
  ObjectiveFunction(const UserModel& user, const kavo_objective& objective);

  // point: one value per user's column, or more. NaN where the expression has no value, and everywhere for an
  // expression that cannot be evaluated here, such as one with an imported function.
  double at(std::span<const double> point) const;

 private:
  double linear(std::span<const double> point) const;
  double quadratic(std::span<const double> point) const;
  double expression(std::span<const double> point) const;

  std::size_t columns_;
  kavo_objective objective_;
  kavo_quadratics quadratics_;
  std::shared_ptr<OwnExpressions> own_;  // null when the objective has no expression
  expr::NodeId root_ = -1;               // of the expression, -1: it cannot be evaluated
};

}  // namespace brel::rewrite
