#pragma once

#include "grb/adder/adder.h"

namespace grb {

// Takes blocks of linear objectives. One objective is written as "Obj" and "ObjCon"; several are Gurobi's multiple
// objectives, where one whose direction is not that of the model gets a negative weight.
class LinObjAdder : public Adder<tav::opt::AbstractConstraintAdder> {
 public:
  using Adder::Adder;
  // Throws SupportException before anything is sent when a direction or a function cannot be taken, or when there is a
  // quadratic or nonlinear objective already.
  tav::idx::List add(const tav::opt::ConstraintContainer& block) override;
};

}  // namespace grb
