#pragma once

#include <cstddef>

#include "kavo/link.h"
#include "tav/opt/codes.h"

namespace brel::rewrite {

inline constexpr double kUserInfinity = 1e20;  // from here on a user's bound or side is none

// The sides of a user's row: lower <= f <= upper, of which either may be none.
struct Sides {
  double lower, upper;

  Sides(const kavo_rows& rows, std::size_t row) : lower(rows.lower[row]), upper(rows.upper[row]) {}

  bool hasLower() const { return lower > -kUserInfinity; }
  bool hasUpper() const { return upper < kUserInfinity; }
  bool areNone() const { return !hasLower() && !hasUpper(); }
  bool areEqual() const { return lower == upper; }
  // Two that differ: more than one sense can say.
  bool areRange() const { return hasLower() && hasUpper() && !areEqual(); }

  // Of a row with one side, or two equal ones: its sense, and the side.
  tav::opt::RowType type() const {
    if (!hasLower()) return tav::opt::RowType::lessOrEqual;
    return hasUpper() ? tav::opt::RowType::equal : tav::opt::RowType::greaterOrEqual;
  }
  double side() const { return hasLower() ? lower : upper; }
};

}  // namespace brel::rewrite
