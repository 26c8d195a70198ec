#pragma once

#include "brel/expr/graph.h"

// Arithmetic with bounds. Results are rounded outward, so that they hold the exact value; sums and products that a
// double can hold are exact. 0 times infinity is 0: no bound is ever NaN. A function that is nowhere defined on its
// argument has its whole range.
namespace brel::expr {

inline constexpr Interval kEverything{};

Interval add(Interval a, Interval b);
Interval scale(Interval a, double factor);
Interval multiply(Interval a, Interval b);
Interval square(Interval a);
Interval divide(Interval a, Interval b);
Interval hull(Interval a, Interval b);
Interval intersect(Interval a, Interval b);
Interval absolute(Interval a);
Interval power(Interval a, double exponent);
Interval signedPower(Interval a, double exponent);
Interval sine(Interval a);
Interval cosine(Interval a);
Interval tangent(Interval a);
// A few units in the last place more on either side, for functions that are computed less exactly than arithmetic.
Interval widen(Interval a);

enum class Slope { rising, falling };
// Of a function that rises or falls throughout its domain; its values lie in `range`.
template <class Function>
Interval monotone(Interval a, Slope slope, Interval domain, Interval range, const Function& function) {
  const Interval inside = intersect(a, domain);
  if (!(inside.lower <= inside.upper)) return range;
  const double first = function(inside.lower), last = function(inside.upper);
  return intersect(widen(slope == Slope::rising ? Interval{first, last} : Interval{last, first}), range);
}

}  // namespace brel::expr
