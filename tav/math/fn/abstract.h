#pragma once

#include <span>
#include <string_view>

#include "tav/math/symbol.h"

namespace tav::math::fn {

// A named function of the catalogue. Functions have no state and live as long as the program.
template <class T>
class Abstract {
 public:
  virtual ~Abstract() = default;

  // Such as "tav:function:basic:Add".
  virtual std::string_view identifier() const = 0;

  // The arguments of a call are the inputs followed by the parameters. -1 inputs: any number, at least one. A vector
  // argument is one that stands for any number of values: a vector, a call of Vectorize or a linear function.
  virtual int inputCount() const = 0;
  virtual int parameterCount() const = 0;
  virtual bool hasVectorInput() const = 0;
  virtual bool hasVectorParameter() const = 0;

  // Whether a call may have so many arguments.
  bool takes(int argumentCount) const {
    const int inputs = argumentCount - parameterCount();
    return inputCount() < 0 ? inputs > 0 : inputs == inputCount();
  }

  // The function of plain numbers: the values of all arguments one after another, a vector argument with all its
  // values. Out of the function's domain the result is NaN or infinite as the limit says; never an error.
  virtual T value(std::span<const T> arguments) const = 0;

  // The function of constants and vectors, as a constant (of Vectorize: a vector). Raises tav::CheckException for any
  // other kind of argument, or a number of arguments that it does not take.
  virtual Symbol<T> evaluate(std::span<const Symbol<T>> arguments) const;
};

extern template class Abstract<double>;

}  // namespace tav::math::fn
