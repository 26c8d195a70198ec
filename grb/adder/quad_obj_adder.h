#pragma once

#include "grb/adder/adder.h"

namespace grb {

// Takes a quadratic objective, which can only be the model's one and only: one GRBaddqpterms call with the products as
// the function stores them, then "Obj" and "ObjCon".
class QuadObjAdder : public Adder<tav::opt::AbstractConstraintAdder> {
 public:
  using Adder::Adder;
  // Throws SupportException before anything is sent when there is an objective already or the block has several, or
  // when the direction or the function cannot be taken; the cast error for more terms than an int counts. Once Gurobi
  // has the products, the objective counts as added: they would be added again.
  tav::idx::List add(const tav::opt::ConstraintContainer& block) override;
};

}  // namespace grb
