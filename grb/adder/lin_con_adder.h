#pragma once

#include "grb/adder/adder.h"

namespace grb {

// Takes blocks of linear rows: one GRBaddconstr call per row, then lazy marks. A row reads: function, sense, 0; its
// right-hand side is the negated constant of the function.
class LinConAdder : public Adder<tav::opt::AbstractConstraintAdder> {
 public:
  using Adder::Adder;
  // Throws SupportException before anything is sent when a domain type or a function cannot be taken. After a
  // GurobiException the rows already sent stay.
  tav::idx::List add(const tav::opt::ConstraintContainer& block) override;
};

}  // namespace grb
