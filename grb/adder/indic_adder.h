#pragma once

#include "grb/adder/adder.h"

namespace grb {

// Takes blocks of linear rows that a variable switches on: one GRBaddgenconstrIndicator call per row. The links stand
// in a group of their own (tav::opt::LinkQuantity); a row reads: function, sense, 0.
class IndicAdder : public Adder<tav::opt::AbstractLinkedConstraintAdder> {
 public:
  using Adder::Adder;
  // Throws SupportException before anything is sent when a domain type, a link type, a function or a linked element
  // cannot be taken, and for a linked variable that can be something else than 0 or 1: Gurobi would take it and forbid
  // it all other values.
  tav::idx::List add(const tav::opt::LinkedConstraintContainer& block) override;
};

}  // namespace grb
