#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "brel/rewrite/beyond.h"
#include "brel/rewrite/trail.h"
#include "brel/user_model.h"
#include "tav/opt/block.h"

// Blocks of what is sent besides the user's own columns and linear rows. They view the arrays of their source, which
// must outlive them. space: the solver's variable space. The right-hand side of a row is the negated constant of its
// function, but that of a nonlinear row, whose function has the constant already.
namespace brel::load {

tav::opt::ConstraintContainer linearBlock(const rewrite::LinearRows& rows, std::uint64_t space,
                                          const rewrite::Starts& start);
tav::opt::ConstraintContainer quadraticBlock(const rewrite::QuadraticRows& rows, std::uint64_t space);
tav::opt::LinkedConstraintContainer indicatorBlock(const rewrite::IndicatorRows& rows, std::uint64_t space);
// ownGroup: the tag of the solver's own group.
tav::opt::ConstraintContainer nonlinearBlock(const rewrite::NonlinearRows& rows, std::string_view ownGroup);

// Special ordered sets: members and weights of set s are start[s] .. start[s+1]-1.
struct SetView {
  std::span<const unsigned char> type;  // 1 or 2
  std::span<const std::size_t> start;
  std::span<const int> column;
  std::span<const double> weight;
};
SetView viewOf(const kavo_sets& sets);
SetView viewOf(const rewrite::OrderedSets& sets);
tav::opt::ConstraintContainer setBlock(const SetView& sets, std::uint64_t space);

}  // namespace brel::load
