#pragma once

#include "grb/adder/adder.h"

namespace grb {

// Takes blocks of nonlinear rows. Functions are expressions; linear functions, variables and constants are taken as
// well.
//
// Every row is first tried as a general nonlinear constraint: an auxiliary variable z (free, unnamed) for what is not
// linear in the function, a row "linear terms + z, sense, negated constant", and a general constraint z = remainder,
// both with the name of the row. A function that is linear through and through has the remainder 0. Thus there is
// exactly one general constraint per row, whatever the row is; linear rows are better given to the adder of linear
// rows.
//
// What cannot be had so, and every row whose "trynonlin" is given and not 1, is looked at as a function constraint
// (gen_constr.h), the families in their order; the first failure is told in the log. A row that is none either is
// refused with "Constraint not supported". Rows before a refused one stay.
//
// After a GurobiException in the first attempt the block goes on only when Gurobi still holds everything that was
// added.
class NonlinConAdder : public Adder<tav::opt::AbstractConstraintAdder> {
 public:
  using Adder::Adder;
  // Throws SupportException before anything is sent when a domain type is unknown.
  tav::idx::List add(const tav::opt::ConstraintContainer& block) override;
};

}  // namespace grb
