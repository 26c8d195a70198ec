#pragma once

#include "brel/rewrite/lowering.h"

namespace brel::rewrite {

// Rows that keep `low` <= node <= `high`, wherever a literal is true or, without one, everywhere.
struct Range {
  double low, high;
};
void keepWithin(Rewriter& rewriter, NodeId node, Range range);
void keepWithinWhen(Rewriter& rewriter, Literal when, NodeId node, Range range);

// Ties the remainder x - d q of a division that cuts toward zero to the sign of x: within [0, most] for x >= 0, within
// [-most, 0] for x <= 0. A binary column tells the sign when the bounds of x do not.
void keepSignedRemainder(Lowering& in, NodeId x, NodeId remainder, double most);

}  // namespace brel::rewrite
