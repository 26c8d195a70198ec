#pragma once

#include "tav/math/fn/abstract.h"

// What the functions of the catalogue share: how many inputs and parameters they take. The flags say which of result,
// inputs and parameters, in this order, are vectors.
namespace tav::math::fn {

// One input. For functions of any number of operands (isAnyCount) all operands together are the input.
template <class T, int kResult, int kInput>
class AbstractIn1Par0 : public Abstract<T> {
 public:
  int inputCount() const override { return isAnyCount() ? -1 : 1; }
  int parameterCount() const override { return 0; }
  bool hasVectorInput() const override { return kInput != 0; }
  bool hasVectorParameter() const override { return false; }

 protected:
  virtual bool isAnyCount() const { return kResult != 0; }
};

template <class T, int kResult, int kInput1, int kInput2>
class AbstractIn2Par0 : public Abstract<T> {
 public:
  int inputCount() const override { return 2; }
  int parameterCount() const override { return 0; }
  bool hasVectorInput() const override { return kInput1 != 0 || kInput2 != 0; }
  bool hasVectorParameter() const override { return false; }
};

template <class T, int kResult, int kInput, int kParameter>
class AbstractIn1Par1 : public Abstract<T> {
 public:
  int inputCount() const override { return 1; }
  int parameterCount() const override { return 1; }
  bool hasVectorInput() const override { return kInput != 0; }
  bool hasVectorParameter() const override { return kParameter != 0; }
};

}  // namespace tav::math::fn
