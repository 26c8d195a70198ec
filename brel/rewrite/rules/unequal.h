#pragma once

#include "brel/rewrite/rewriter.h"

// e is not 0: below or above it by the least step.
namespace brel::rewrite {

// Everywhere.
void keepUnequal(Rewriter& rewriter, NodeId e);
// Unless a binary column is 1. e is affine.
void keepUnequalUnless(Rewriter& rewriter, NodeId isEqual, NodeId e);

}  // namespace brel::rewrite
