#pragma once

#include <memory>
#include <span>
#include <vector>

#include "kavo/link.h"
#include "tav/opt/block.h"

namespace brel::load {

// The solver's own group of a block: the host's named values that the solver takes, by position of the block's
// elements. element: the host's element that each of the block's stands for, -1: none; empty: the first element stands
// for the first, and so on. count: number of elements in the block. preference: of the host's rows, or of the columns
// of the block; empty: none is handed over.
struct OwnGroupSource {
  const trpRec* host;
  int kind;  // a kavo_kind
  std::span<const int> element;
  std::size_t count;
  std::span<const double> preference;
};

// feaspref (the preferences), priority (numbers) and partition of columns.
std::shared_ptr<tav::opt::BlockGroup> columnGroup(const OwnGroupSource& source);
// feaspref (the preferences) and lazy of rows. A row that stands for none of the host's has the preference 0.
std::shared_ptr<tav::opt::BlockGroup> rowGroup(const OwnGroupSource& source);
// weight, priority, abstol and reltol of objectives; the tolerances that are given here, one per objective, come before
// those of the host. Views them.
std::shared_ptr<tav::opt::BlockGroup> objectiveGroup(const OwnGroupSource& source, const std::vector<double>& absTol,
                                                     const std::vector<double>& relTol);

}  // namespace brel::load
