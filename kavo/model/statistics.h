#pragma once

#include <cstddef>

#include "kavo/model/model.h"

namespace kavo {

// What a model consists of, as kavo.h defines the numbers. solved: the index of the objective that is solved, or
// anything beyond the last.
kavo_statistics statistics(const Model& model, std::size_t solved);

}  // namespace kavo
