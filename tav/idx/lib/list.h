#pragma once

#include <vector>

#include "tav/idx/abstract_list.h"

namespace tav::idx::lib {

// Elements one by one, in any order, possibly repeated.
class List final : public AbstractList {
 public:
  // Takes the vector over. Raises tav::CheckException when it has more than 2147483647 entries.
  explicit List(std::vector<int> indices);

  Kind kind() const override { return Kind::kUnordered; }
  int size() const override { return static_cast<int>(indices_.size()); }
  int front() const override { return indices_.front(); }  // not of an empty list
  int back() const override { return indices_.back(); }    // not of an empty list
  int min() const override;
  int max() const override;
  int at(int i) const override { return indices_[static_cast<std::size_t>(i)]; }
  bool contains(int value) const override;
  void copyTo(std::span<int> target) const override;
  Values values() const override { return Values(std::span<const int>(indices_)); }
  void map(std::span<int> positions) const override;

 private:
  std::vector<int> indices_;
};

}  // namespace tav::idx::lib
