#pragma once

#include <cstdint>

#include "tav/idx/lib/range.h"

namespace grb {

// Counts the elements of one kind in the Gurobi model, everybody's: whoever adds one, for whatever purpose, registers
// it. Every registry bears a number that no other one in the process has.
class Registry {
 public:
  Registry();

  std::uint64_t serial() const { return serial_; }
  int count() const { return count_; }
  // Positions for n new elements.
  tav::idx::lib::Range add(int n) {
    const tav::idx::lib::Range positions(count_, n);
    count_ += n;
    return positions;
  }
  // The position of one new element.
  int add() { return count_++; }
  void clear() { count_ = 0; }

 private:
  std::uint64_t serial_;
  int count_ = 0;
};

}  // namespace grb
