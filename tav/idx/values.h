#pragma once

#include <span>
#include <utility>
#include <vector>

namespace tav::idx {

// The elements of a list as one contiguous sequence: either a view of storage that the list owns (valid as long as the
// list) or a vector of its own. Moves, does not copy: a copy would not know whose storage it shows.
class Values {
 public:
  explicit Values(std::span<const int> borrowed) : span_(borrowed) {}
  explicit Values(std::vector<int> owned) : owned_(std::move(owned)), span_(owned_), isOwning_(true) {}
  Values(Values&&) = default;
  Values& operator=(Values&&) = default;

  std::span<const int> span() const { return span_; }
  bool isOwning() const { return isOwning_; }

  const int* data() const { return span_.data(); }
  int size() const { return static_cast<int>(span_.size()); }
  int operator[](int i) const { return span_[static_cast<std::size_t>(i)]; }
  auto begin() const { return span_.begin(); }
  auto end() const { return span_.end(); }

 private:
  std::vector<int> owned_;
  std::span<const int> span_;
  bool isOwning_ = false;
};

}  // namespace tav::idx
