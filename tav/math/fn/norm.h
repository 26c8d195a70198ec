#pragma once

#include "tav/math/fn/bases.h"

namespace tav::math::fn {

// Sum of the absolute values.
class Norm1 final : public AbstractIn1Par0<double, 0, 1> {
 public:
  std::string_view identifier() const override { return "tav:function:norm:Norm1"; }
  double value(std::span<const double> arguments) const override;
};

// Euclidean length, without overflow or loss for very large and very small elements.
class Norm2 final : public AbstractIn1Par0<double, 0, 1> {
 public:
  std::string_view identifier() const override { return "tav:function:norm:Norm2"; }
  double value(std::span<const double> arguments) const override;
};

// Largest absolute value; NaN when an element is NaN.
class NormInf final : public AbstractIn1Par0<double, 0, 1> {
 public:
  std::string_view identifier() const override { return "tav:function:norm:NormInf"; }
  double value(std::span<const double> arguments) const override;
};

}  // namespace tav::math::fn
