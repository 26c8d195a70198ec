#pragma once

#include <cstddef>

#include "kavo/result/results.h"

namespace kavo {

// A kavo_quantity taken apart.
struct Quantity {
  std::size_t index;  // in Answer::values
  int kind;           // of its elements, KAVO_COLUMN or KAVO_ROW
  const char* name;   // for messages, such as "reduced costs"
  bool fixed;         // it came with KAVO_OF_FIXED
};

// Error (KAVO_INVALID) for a number that is no quantity.
Quantity quantityOf(int number);

// The kind of a basis and whether it came with KAVO_OF_FIXED; Error (KAVO_INVALID) unless columns or rows.
struct BasisKind {
  int kind;
  bool fixed;
};
BasisKind basisKindOf(int number);

// Error (KAVO_INVALID) for a kind that a conflict cannot have.
void checkConflictKind(int kind);

}  // namespace kavo
