#pragma once

#include <cstdint>

#include "tav/idx/list.h"
#include "tav/opt/block.h"

namespace tav::opt {

// Takes blocks of one kind of element into a solver's model.
class AbstractAdder {
 public:
  virtual ~AbstractAdder() = default;
  // False once the solver or its model is gone; `add` fails then.
  virtual bool isActive() const = 0;
  // The identity that variables and linear functions of a block must carry; 0 when the solver is gone.
  virtual std::uint64_t variableSpace() const = 0;
};

// `add` translates one block, as a whole or not at all as far as it can be checked beforehand, and returns the
// positions of the new elements in the solver's numbering of that kind. Throws SupportException for what the solver
// cannot take.
class AbstractVariableAdder : public AbstractAdder {
 public:
  virtual idx::List add(const VariableContainer& block) = 0;
};

class AbstractConstraintAdder : public AbstractAdder {
 public:
  virtual idx::List add(const ConstraintContainer& block) = 0;
};

class AbstractLinkedConstraintAdder : public AbstractAdder {
 public:
  virtual idx::List add(const LinkedConstraintContainer& block) = 0;
};

}  // namespace tav::opt
