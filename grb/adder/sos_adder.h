#pragma once

#include "grb/adder/adder.h"

namespace grb {

// Takes blocks of special ordered sets: one GRBaddsos call per set, whose members are the variables of its function.
// Weights are what the block says under tav::opt::RowQuantity::weights; a set without any (no such container, or an
// empty vector) is sent without. Sets have no names.
class SOSAdder : public Adder<tav::opt::AbstractConstraintAdder> {
 public:
  using Adder::Adder;
  // Throws SupportException before anything is sent when a domain type or a function cannot be taken, for a variable
  // that is twice in a set, weights that are not finite or not as many as the members, and for a set of type 2 whose
  // weights, given one by one, are not all different: they would not tell its order. One constant for all members
  // leaves them in the order of the function.
  tav::idx::List add(const tav::opt::ConstraintContainer& block) override;
};

}  // namespace grb
