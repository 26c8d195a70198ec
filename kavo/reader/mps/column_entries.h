#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

#include "kavo/model/model.h"

namespace kavo::reader::mps {

// The coefficients of a file that lists them column by column, until they are turned into rows. They stand in blocks
// that are never moved, so that a growing matrix is never in memory twice.
class ColumnEntries {
 public:
  explicit ColumnEntries(std::size_t rows) : rows_(rows) {}

  void addColumn() { length_.push_back(0); }

  // Appends an entry of a column, which must not be below that of the call before. false, and nothing is changed, when
  // the column has an entry in this row already. A value of 0 counts as an entry for this but is not kept.
  bool add(int column, int row, double value) {
    RowState& state = rows_[static_cast<std::size_t>(row)];
    if (state.lastColumn == column) return false;
    state.lastColumn = column;
    if (value == 0) return true;
    if (used_ == kBlockSize) addBlock();
    Block& block = *blocks_.back();
    block.row[used_] = row;
    block.value[used_++] = value;
    ++length_[static_cast<std::size_t>(column)];
    ++state.count;
    return true;
  }

  // Fills start, column and value of `rows`. The time is linear in rows, columns and entries; within a row the columns
  // go up. Empties this object.
  void moveInto(Rows& rows);

 private:
  static constexpr std::size_t kBlockSize = std::size_t{1} << 15;
  struct Block {
    std::array<int, kBlockSize> row;
    std::array<double, kBlockSize> value;
  };
  struct RowState {
    int lastColumn = -1;  // the last column that has an entry here
    int count = 0;        // entries kept
  };

  void addBlock();

  std::vector<RowState> rows_;
  std::vector<std::unique_ptr<Block>> blocks_;
  std::size_t used_ = kBlockSize;  // entries in the last block
  std::vector<int> length_;        // entries kept per column
};

}  // namespace kavo::reader::mps
