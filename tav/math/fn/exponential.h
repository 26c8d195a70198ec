#pragma once

#include "tav/math/fn/bases.h"

namespace tav::math::fn {

class Square final : public AbstractIn1Par0<double, 0, 0> {
 public:
  std::string_view identifier() const override { return "tav:function:exponential:Square"; }
  double value(std::span<const double> arguments) const override;
};

class SquareRoot final : public AbstractIn1Par0<double, 0, 0> {
 public:
  std::string_view identifier() const override { return "tav:function:exponential:SquareRoot"; }
  double value(std::span<const double> arguments) const override;
};

// Base, exponent. A negative base needs a whole exponent; 0 to the power 0 is 1.
class Power final : public AbstractIn2Par0<double, 0, 0, 0> {
 public:
  std::string_view identifier() const override { return "tav:function:exponential:Power"; }
  double value(std::span<const double> arguments) const override;
};

// Power under the name that some models give it; the values are the same.
class Power0 final : public AbstractIn2Par0<double, 0, 0, 0> {
 public:
  std::string_view identifier() const override { return "tav:function:exponential:Power0"; }
  double value(std::span<const double> arguments) const override;
};

// Base, constant exponent.
class PowerConst final : public AbstractIn1Par1<double, 0, 0, 0> {
 public:
  std::string_view identifier() const override { return "tav:function:exponential:PowerConst"; }
  double value(std::span<const double> arguments) const override;
};

// Base x and exponent a: sign(x) * |x|^a, where sign(0) is 0.
class SignPower final : public AbstractIn1Par1<double, 0, 0, 0> {
 public:
  std::string_view identifier() const override { return "tav:function:exponential:SignPower"; }
  double value(std::span<const double> arguments) const override;
};

class Exp final : public AbstractIn1Par0<double, 0, 0> {
 public:
  std::string_view identifier() const override { return "tav:function:exponential:Exp"; }
  double value(std::span<const double> arguments) const override;
};

// Natural logarithm; -infinity at 0, NaN below.
class Log final : public AbstractIn1Par0<double, 0, 0> {
 public:
  std::string_view identifier() const override { return "tav:function:exponential:Log"; }
  double value(std::span<const double> arguments) const override;
};

class Log2 final : public AbstractIn1Par0<double, 0, 0> {
 public:
  std::string_view identifier() const override { return "tav:function:exponential:Log2"; }
  double value(std::span<const double> arguments) const override;
};

class Log10 final : public AbstractIn1Par0<double, 0, 0> {
 public:
  std::string_view identifier() const override { return "tav:function:exponential:Log10"; }
  double value(std::span<const double> arguments) const override;
};

// Logarithm of the input to the base given by the parameter, which is positive and not 1.
class LogBase final : public AbstractIn1Par1<double, 0, 0, 0> {
 public:
  std::string_view identifier() const override { return "tav:function:exponential:LogBase"; }
  double value(std::span<const double> arguments) const override;
};

// 1 / (1 + exp(-x)), without overflow on either side.
class Sigmoid final : public AbstractIn1Par0<double, 0, 0> {
 public:
  std::string_view identifier() const override { return "tav:function:exponential:Sigmoid"; }
  double value(std::span<const double> arguments) const override;
};

// Input and coefficients, the one of the highest power first.
class Polynomial final : public AbstractIn1Par1<double, 0, 0, 1> {
 public:
  std::string_view identifier() const override { return "tav:function:exponential:Polynomial"; }
  double value(std::span<const double> arguments) const override;
};

}  // namespace tav::math::fn
