#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "kavo/link.h"
#include "tav/opt/codes.h"

namespace brel::rewrite {

// A conflict on its way back: of each part that was sent whether it belongs to it, and the kavo_conflict_marks of the
// user's elements, which are filled.
struct Marks {
  std::vector<bool> lower, upper;                                  // bounds of the solver's columns
  std::vector<bool> row;                                           // rows that stay the user's
  std::vector<bool> linear, quadratic, indicator, nonlinear, set;  // of Beyond
  std::span<unsigned char> userColumn, userRow, userLogical;
  // Whether the marked elements hold no more than the parts in the conflict, so that the user's conflict is minimal
  // when the solver's is.
  bool isExact = true;
};

// Sides say more than that the element belongs to the conflict.
inline void addMark(unsigned char& mark, int what) {
  const int sides = (mark | what) & KAVO_CONFLICT_BOTH;
  mark = static_cast<unsigned char>(sides != 0 ? sides : mark | what);
}

// The mark of the side at which rows of this type hold.
inline int sideMark(tav::opt::RowType type) {
  if (type == tav::opt::RowType::equal) return KAVO_CONFLICT_BOTH;
  return type == tav::opt::RowType::greaterOrEqual ? KAVO_CONFLICT_LOWER : KAVO_CONFLICT_UPPER;
}

// The mark of a row whose sides are the bounds of a column.
inline int sideMarkOfColumn(const Marks& marks, std::size_t column) {
  const int sides = (marks.lower[column] ? KAVO_CONFLICT_LOWER : 0) | (marks.upper[column] ? KAVO_CONFLICT_UPPER : 0);
  return sides != 0 ? sides : KAVO_CONFLICT_MEMBER;
}

}  // namespace brel::rewrite
