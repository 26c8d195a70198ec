#pragma once

#include "grb/adder/adder.h"

namespace grb {

// Takes blocks of variables: one GRBaddvars call per block, then partitions and names.
class VarAdder : public Adder<tav::opt::AbstractVariableAdder> {
 public:
  using Adder::Adder;
  // Bounds of 1e20 or more are infinite to Gurobi. Throws SupportException before anything is sent when a domain type
  // is unknown or a bound is not a number.
  tav::idx::List add(const tav::opt::VariableContainer& block) override;
};

}  // namespace grb
