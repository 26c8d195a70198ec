#include "tav/idx/lib/list.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "tav/util/exception.h"

namespace tav::idx::lib {

List::List(std::vector<int> indices) : indices_(std::move(indices)) {
  constexpr int kLargest = std::numeric_limits<int>::max();
  if (indices_.size() > static_cast<std::size_t>(kLargest)) {
    throw CheckException::failedLessOrEqualTo("indices.size()", indices_.size(), kLargest);
  }
}

int List::min() const {
  return indices_.empty() ? std::numeric_limits<int>::max() : *std::min_element(indices_.begin(), indices_.end());
}

int List::max() const {
  return indices_.empty() ? std::numeric_limits<int>::min() : *std::max_element(indices_.begin(), indices_.end());
}

bool List::contains(int value) const { return std::find(indices_.begin(), indices_.end(), value) != indices_.end(); }

void List::copyTo(std::span<int> target) const { std::copy(indices_.begin(), indices_.end(), target.begin()); }

void List::map(std::span<int> positions) const {
  for (int& position : positions) position = indices_[static_cast<std::size_t>(position)];
}

}  // namespace tav::idx::lib
