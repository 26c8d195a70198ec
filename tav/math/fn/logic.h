#pragma once

#include "tav/math/fn/bases.h"

// Operands are 0 or 1 within a solver's tolerance: above one half is true. The result is 0 or 1, NaN when an operand
// is.
namespace tav::math::fn {

class BoolAnd final : public AbstractIn1Par0<double, 0, 0> {
 public:
  std::string_view identifier() const override { return "tav:function:logic:BoolAnd"; }
  double value(std::span<const double> arguments) const override;

 protected:
  bool isAnyCount() const override { return true; }
};

class BoolOr final : public AbstractIn1Par0<double, 0, 0> {
 public:
  std::string_view identifier() const override { return "tav:function:logic:BoolOr"; }
  double value(std::span<const double> arguments) const override;

 protected:
  bool isAnyCount() const override { return true; }
};

}  // namespace tav::math::fn
