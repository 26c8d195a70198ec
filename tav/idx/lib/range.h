#pragma once

#include "tav/idx/abstract_list.h"

namespace tav::idx::lib {

// The contiguous elements first, first + 1, ..., first + size - 1.
class Range final : public AbstractList {
 public:
  // Raises tav::CheckException when size is negative; `first` is not checked.
  Range(int first, int size);

  Kind kind() const override { return Kind::kContiguous; }
  int size() const override { return size_; }
  int front() const override { return first_; }
  int back() const override { return at(size_ - 1); }
  // Unsigned arithmetic: the end of an empty range at the lowest position wraps instead of being undefined.
  int at(int i) const override { return static_cast<int>(static_cast<unsigned>(first_) + static_cast<unsigned>(i)); }
  void copyTo(std::span<int> target) const override;
  void map(std::span<int> positions) const override;

 private:
  int first_;
  int size_;
};

}  // namespace tav::idx::lib
