#pragma once

#include "tests/brel/host.h"

namespace brel_test {

/// A model with a row of every kind, a logical constraint, two ordered sets and a quadratic objective, all with names.
void fillEveryKind(HostModel& model);

}  // namespace brel_test
