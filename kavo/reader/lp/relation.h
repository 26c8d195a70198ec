#pragma once

#include "kavo/reader/lp/reading.h"

namespace kavo::reader::lp {

enum class Relation { kLess, kEqual, kGreater };

// Whether the current word begins with a relation.
bool isRelation(const Words& words);

// Passes a relation: <, <=, =<, =, ==, >, >= or =>; what stands behind it in one word is the current word then.
// expected: what a message says besides the relation.
Relation readRelation(Reading& reading, std::string_view expected);

// The relation as seen from its other side.
Relation flipped(Relation relation);

}  // namespace kavo::reader::lp
