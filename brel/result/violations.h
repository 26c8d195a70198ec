#pragma once

#include <span>

#include "kavo/link.h"

namespace brel::result {

// Evaluates the user's own rows, bounds and integrality at a point and tells the host the largest violation of each
// kind, with the element that has it.
void checkPoint(trpRec* host, const kavo_columns& columns, const kavo_rows& rows, std::span<const double> point);

}  // namespace brel::result
