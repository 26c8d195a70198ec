#pragma once

#include <cstddef>
#include <cstdint>

#include "tav/math/expression.h"

namespace bench {

// One shape of expression: builds one of n elements (a few more or less) over variables 0 to 9 of a space.
struct Shape {
  const char* name;
  void (*build)(tav::math::Expression<double>& target, std::uint64_t space, std::size_t n);
};

// A chain of calls of one argument, one inside the other; a sum of variables and constants side by side; a chain of
// differences of products, such as a reader makes of a long sum.
extern const Shape kShapes[3];

}  // namespace bench
