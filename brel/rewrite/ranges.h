#pragma once

#include <cstddef>
#include <span>

#include "brel/rewrite/sides.h"
#include "kavo/link.h"

namespace brel::rewrite {

template <class T>
struct Ends {
  std::span<T> low, high;

  void give(std::size_t i, double lowEnd, double highEnd) const { low[i] = lowEnd, high[i] = highEnd; }
};

// Sensitivity ranges on their way back: the solver's are read, the user's filled. Those of rows are how far the side
// that was sent may move, down and up.
struct RangeResults {
  Ends<const double> lower, upper;    // of the bounds of the solver's columns
  std::span<const int> columnBasis;   // per solver column
  std::span<const double> primal;     // per solver column
  Ends<const double> linear;          // of the rows of Beyond::linear
  Ends<double> userLower, userUpper;  // of the bounds of the user's columns; so far as the solver has them
  Ends<double> userSide;              // per user row; NaN so far but for rows that stay the user's
};

// Of a row whose sides are the bounds of a column: the range of the side at which it is, else of the nearer one.
inline void giveSideOfColumn(const RangeResults& ranges, const Sides& sides, std::size_t row, std::size_t column) {
  const int status = ranges.columnBasis[column];
  const double value = ranges.primal[column];
  const bool isNearLower = value - sides.lower <= sides.upper - value;
  const bool isLower = status == KAVO_BASIS_LOWER || (status != KAVO_BASIS_UPPER && isNearLower);
  const Ends<const double>& bound = isLower ? ranges.lower : ranges.upper;
  ranges.userSide.give(row, bound.low[column], bound.high[column]);
}

}  // namespace brel::rewrite
