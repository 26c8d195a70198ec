#pragma once

#include "tav/math/fn/bases.h"

namespace tav::math::fn {

class Add final : public AbstractIn1Par0<double, 0, 0> {
 public:
  std::string_view identifier() const override { return "tav:function:basic:Add"; }
  double value(std::span<const double> arguments) const override;

 protected:
  bool isAnyCount() const override { return true; }
};

class Subtract final : public AbstractIn2Par0<double, 0, 0, 0> {
 public:
  std::string_view identifier() const override { return "tav:function:basic:Subtract"; }
  double value(std::span<const double> arguments) const override;
};

class Multiply final : public AbstractIn2Par0<double, 0, 0, 0> {
 public:
  std::string_view identifier() const override { return "tav:function:basic:Multiply"; }
  double value(std::span<const double> arguments) const override;
};

class Divide final : public AbstractIn2Par0<double, 0, 0, 0> {
 public:
  std::string_view identifier() const override { return "tav:function:basic:Divide"; }
  double value(std::span<const double> arguments) const override;
};

class Negate final : public AbstractIn1Par0<double, 0, 0> {
 public:
  std::string_view identifier() const override { return "tav:function:basic:Negate"; }
  double value(std::span<const double> arguments) const override;
};

class Abs final : public AbstractIn1Par0<double, 0, 0> {
 public:
  std::string_view identifier() const override { return "tav:function:basic:Abs"; }
  double value(std::span<const double> arguments) const override;
};

// NaN when an operand is NaN, whichever it is.
class Min final : public AbstractIn1Par0<double, 0, 0> {
 public:
  std::string_view identifier() const override { return "tav:function:basic:Min"; }
  double value(std::span<const double> arguments) const override;

 protected:
  bool isAnyCount() const override { return true; }
};

// NaN when an operand is NaN, whichever it is.
class Max final : public AbstractIn1Par0<double, 0, 0> {
 public:
  std::string_view identifier() const override { return "tav:function:basic:Max"; }
  double value(std::span<const double> arguments) const override;

 protected:
  bool isAnyCount() const override { return true; }
};

}  // namespace tav::math::fn
