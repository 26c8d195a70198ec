#pragma once

#include <vector>

#include "kavo/result/results.h"

namespace kavo {

// The model's own rows or columns that a point violates by more than 1e-9, and by how much, in their order: what a
// relaxation had to give up. Measured as kavo_check does. Empty without a point, rows also without activities.
std::vector<Violation> violatedRows(const Model& model, const Answer& answer);
std::vector<Violation> violatedBounds(const Model& model, const Answer& answer);

// Whether the point is that of a relaxation.
bool isRelaxed(const Answer& answer);

}  // namespace kavo
