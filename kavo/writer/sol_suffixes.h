#pragma once

#include <cstddef>

#include "kavo/result/results.h"
#include "kavo/writer/text.h"

namespace kavo::writer {

// The suffixes of a .sol file (docs/results.md). objective: the index of the objective that was solved. Elements whose
// value is unknown are left out, and so are suffixes without any.
void writeSuffixes(Text& text, const Model& model, const Results& results, std::size_t objective);

// What a .sol file gives of a quantity, and of the basis of a kind: that of the model, or else of the fixed one.
const Numbers& ownOrFixed(const Results& results, kavo_quantity quantity);
const Statuses& ownOrFixedBasis(const Results& results, int kind);

}  // namespace kavo::writer
