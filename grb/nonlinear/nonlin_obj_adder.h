#pragma once

#include "grb/adder/adder.h"

namespace grb {

// Takes one nonlinear objective, which must be the only objective of the model: linear terms and constant of the
// function as "Obj" and "ObjCon", the rest as an auxiliary variable with cost 1 (free, unnamed) that a general
// constraint ties to it. How a function is split is said in split.h.
class NonlinObjAdder : public Adder<tav::opt::AbstractConstraintAdder> {
 public:
  using Adder::Adder;
  // Throws SupportException before any Gurobi call when there is another objective, or when the direction or the
  // function cannot be taken.
  tav::idx::List add(const tav::opt::ConstraintContainer& block) override;
};

}  // namespace grb
