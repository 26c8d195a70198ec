#pragma once

#include "grb/adder/adder.h"

namespace grb {

// Takes blocks of quadratic rows: one GRBaddqconstr call per row, with the products as the function stores them. Like a
// linear row each reads: function, sense, 0.
class QuadConAdder : public Adder<tav::opt::AbstractConstraintAdder> {
 public:
  using Adder::Adder;
  // Throws SupportException before anything is sent when a domain type or a function cannot be taken, and the cast
  // error for a function of more terms than an int counts.
  tav::idx::List add(const tav::opt::ConstraintContainer& block) override;
};

}  // namespace grb
