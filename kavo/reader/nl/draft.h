#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "kavo/model/model.h"
#include "kavo/reader/nl/header.h"

namespace kavo::reader::nl {

// An imported function as its F segment tells it.
struct Signature {
  bool declared = false;
  bool takesStrings = false;
  int arguments = 0;  // as many; negative: at least -(arguments + 1)

  bool takes(int count) const { return arguments >= 0 ? count == arguments : count >= -(arguments + 1); }
};

// A model while its segments arrive, in whatever order: what came already, and what can only be put together at the
// end.
class Draft {
 public:
  explicit Draft(Header&& read);

  // The model, all of whose segments are there.
  Model finish();

  // Which segments that must come did not, such as "segment O for objective 1"; "" when none is missing.
  std::string missing() const;
  // What does not fit between the column counts of the segment k and the linear parts of the rows; "" when all fits.
  std::string columnMismatch() const;

  Header header;
  Model model;

  // Per row: where its terms begin in the order of the file, and how many they are; -1: no segment J so far.
  std::vector<std::size_t> rowBegin;
  std::vector<int> rowTerms;
  std::size_t terms = 0;      // of all rows so far
  std::size_t gradients = 0;  // of all objectives so far
  int lastRow = -1;           // of the J segment before
  bool rowsInOrder = true;

  std::vector<int> inRows;     // per column: in how many rows it appears
  std::vector<int> announced;  // per column but the last: in how many rows by the segment k; empty when there is none

  // Which C, O, G, L segments came.
  std::vector<bool> bodies, objectiveBodies, objectiveParts;
  bool sides = false, bounds = false, primal = false, dual = false;
  std::vector<std::pair<int, double>> constants;  // rows whose body is only a number
  std::vector<Signature> signatures;

 private:
  void setTypes();
  void foldConstants();
  void orderRows();
};

}  // namespace kavo::reader::nl
