#include "kavo/reader/mps/column_entries.h"

namespace kavo::reader::mps {

void ColumnEntries::addBlock() {
  blocks_.push_back(std::make_unique_for_overwrite<Block>());
  used_ = 0;
}

void ColumnEntries::moveInto(Rows& rows) {
  // start[i + 1] is where the next entry of row i goes; once all are placed it is where row i ends.
  rows.start.assign(rows_.size() + 1, 0);
  std::size_t sum = 0;
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    rows.start[i + 1] = sum;
    sum += static_cast<std::size_t>(rows_[i].count);
  }
  rows.column.resize(sum);
  rows.value.resize(sum);
  std::size_t block = 0, i = 0;
  for (std::size_t column = 0; column < length_.size(); ++column) {
    for (int k = 0; k < length_[column]; ++k, ++i) {
      if (i == kBlockSize) {
        blocks_[block++].reset();
        i = 0;
      }
      const std::size_t place = rows.start[static_cast<std::size_t>(blocks_[block]->row[i]) + 1]++;
      rows.column[place] = static_cast<int>(column);
      rows.value[place] = blocks_[block]->value[i];
    }
  }
  *this = ColumnEntries(0);
}

}  // namespace kavo::reader::mps
