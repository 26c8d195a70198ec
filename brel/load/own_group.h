#pragma once

#include <memory>
#include <span>

#include "kavo/link.h"
#include "tav/opt/block.h"

namespace brel::load {

// The solver's own group of a block: the host's named values that the solver takes, by position of the block's
// elements. element: the host's element that each of the block's stands for, -1: none; empty: the first element stands
// for the first, and so on. count: number of elements in the block.
struct OwnGroupSource {
  const trpRec* host;
  int kind;  // a kavo_kind
  std::span<const int> element;
  std::size_t count;
};

// feaspref, priority (numbers) and partition of columns.
std::shared_ptr<tav::opt::BlockGroup> columnGroup(const OwnGroupSource& source);
// feaspref (number) and lazy of rows.
std::shared_ptr<tav::opt::BlockGroup> rowGroup(const OwnGroupSource& source);

}  // namespace brel::load
