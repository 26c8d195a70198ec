#pragma once

#include <cstdint>
#include <string_view>

#include "brel/rewrite/beyond.h"
#include "kavo/link.h"
#include "tav/opt/block.h"

namespace brel::load {

// The function tag of the adder that takes the objective.
std::string_view objectiveFunction(const rewrite::Beyond* beyond);

// The block of the user's objective, or of what the rules made of it. Views the arrays of both.
tav::opt::ConstraintContainer objectiveBlock(const kavo_objective& user, const rewrite::Beyond* beyond,
                                             std::uint64_t space);

// How many the user's model has.
std::size_t objectiveCount(const trpRec* host);

// The block of every objective of the user's model, which must all be linear. Views the host's arrays.
tav::opt::ConstraintContainer allObjectivesBlock(trpRec* host, std::uint64_t space);

}  // namespace brel::load
