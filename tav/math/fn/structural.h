#pragma once

#include <string>
#include <utility>

#include "tav/math/fn/bases.h"

namespace tav::math::fn {

// Makes one vector of all its operands, for functions that take a vector.
class Vectorize final : public AbstractIn1Par0<double, 1, 0> {
 public:
  std::string_view identifier() const override { return "tav:function:structural:Vectorize"; }

  // A vector is not a number: its value counts only as the operands that it hands on. NaN.
  double value(std::span<const double> arguments) const override;

  // The vector of the operands' values.
  Symbol<double> evaluate(std::span<const Symbol<double>> arguments) const override;
};

// A linear function as part of an expression. Its three arguments are the linear function f, a vector and a constant c;
// the result is f + c. In a model the vector is empty, since the variables of f say where the values come from.
class Linear final : public Abstract<double> {
 public:
  std::string_view identifier() const override { return "tav:function:linear"; }
  int inputCount() const override { return 2; }
  int parameterCount() const override { return 1; }
  bool hasVectorInput() const override { return true; }
  bool hasVectorParameter() const override { return false; }

  // The sum: the terms and the constant of f arrive as values.
  double value(std::span<const double> arguments) const override;

  // Here the vector gives the values of f's variables, in the order of its terms. Raises tav::CheckException when their
  // numbers differ.
  Symbol<double> evaluate(std::span<const Symbol<double>> arguments) const override;
};

// A function outside the catalogue: it has a name that messages can tell and can be evaluated, but nobody looks it up.
class General final : public Abstract<double> {
 public:
  using Function = double (*)(std::span<const double>);

  // inputCount -1: any number.
  General(std::string identifier, int inputCount, Function function)
      : identifier_(std::move(identifier)), inputCount_(inputCount), function_(function) {}

  std::string_view identifier() const override { return identifier_; }
  int inputCount() const override { return inputCount_; }
  int parameterCount() const override { return 0; }
  bool hasVectorInput() const override { return false; }
  bool hasVectorParameter() const override { return false; }
  double value(std::span<const double> arguments) const override { return function_(arguments); }

 private:
  std::string identifier_;
  int inputCount_;
  Function function_;
};

}  // namespace tav::math::fn
