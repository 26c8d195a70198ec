#pragma once

#include <cstddef>
#include <vector>

namespace kavo::reader::lp {

// Linear terms, of every column one: what is added to a column that has one is summed up.
class LinearTerms {
 public:
  void clear();
  void add(int column, double value);
  void negate();
  std::size_t size() const { return columns_.size(); }
  int column(std::size_t k) const { return columns_[k]; }
  double value(std::size_t k) const { return values_[k]; }

 private:
  static constexpr std::size_t kShort = 16;  // up to so many terms are searched one by one

  // The position of the column's term, or size().
  std::size_t find(int column);
  void remember(std::size_t position);

  std::vector<int> columns_;
  std::vector<double> values_;
  // Per column the position of its term. What terms of earlier sums left here is harmless: it counts only where the
  // term at that position is of this column.
  std::vector<std::size_t> positions_;
};

}  // namespace kavo::reader::lp
