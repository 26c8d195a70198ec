#pragma once

#include "tav/math/fn/bases.h"

namespace tav::math::fn {

class Sin final : public AbstractIn1Par0<double, 0, 0> {
 public:
  std::string_view identifier() const override { return "tav:function:trigonometric:Sin"; }
  double value(std::span<const double> arguments) const override;
};

class Cos final : public AbstractIn1Par0<double, 0, 0> {
 public:
  std::string_view identifier() const override { return "tav:function:trigonometric:Cos"; }
  double value(std::span<const double> arguments) const override;
};

class Tan final : public AbstractIn1Par0<double, 0, 0> {
 public:
  std::string_view identifier() const override { return "tav:function:trigonometric:Tan"; }
  double value(std::span<const double> arguments) const override;
};

// The one identifier that ends in lower case; models know it so.
class TanH final : public AbstractIn1Par0<double, 0, 0> {
 public:
  std::string_view identifier() const override { return "tav:function:trigonometric:tanh"; }
  double value(std::span<const double> arguments) const override;
};

}  // namespace tav::math::fn
