#pragma once

#include "kavo/kavo.h"

namespace kavo::reader {

// What a file has said of a column so far, several values together.
enum ColumnFlag : unsigned char {
  kIntegerFlag = 1,
  kBinaryFlag = 2,
  kSemiFlag = 4,
  kLowerFlag = 8,   // the file gives the lower bound
  kUpperFlag = 16,  // the file gives the upper bound
};

// The type that follows.
inline kavo_type typeOfFlags(unsigned char flags) {
  if ((flags & kSemiFlag) != 0) {
    return (flags & (kIntegerFlag | kBinaryFlag)) != 0 ? KAVO_SEMIINTEGER : KAVO_SEMICONTINUOUS;
  }
  if ((flags & kBinaryFlag) != 0) return KAVO_BINARY;
  return (flags & kIntegerFlag) != 0 ? KAVO_INTEGER : KAVO_CONTINUOUS;
}

}  // namespace kavo::reader
