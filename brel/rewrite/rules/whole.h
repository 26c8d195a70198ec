#pragma once

#include "brel/rewrite/lowering.h"

namespace brel::rewrite {

// Rows that keep `low` <= node <= `high`, wherever a literal is true or, without one, everywhere. The bounds are nodes.
struct Range {
  NodeId low, high;
};
void keepWithin(Rewriter& rewriter, NodeId node, Range range);
void keepWithinWhen(Rewriter& rewriter, Literal when, NodeId node, Range range);

// Keeps an affine node within one range where x is 0 or more, and within another where it is 0 or less. A binary column
// tells the sign when the bounds of x do not.
void keepBySign(Rewriter& rewriter, NodeId x, NodeId node, Range positive, Range negative);

}  // namespace brel::rewrite
