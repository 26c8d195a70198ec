#include "kavo/reader/lp/linear_terms.h"

#include <algorithm>

namespace kavo::reader::lp {

void LinearTerms::clear() {
  columns_.clear();
  values_.clear();
}

std::size_t LinearTerms::find(int column) {
  if (size() <= kShort) {
    return static_cast<std::size_t>(std::find(columns_.begin(), columns_.end(), column) - columns_.begin());
  }
  if (size() == kShort + 1) {
    for (std::size_t k = 0; k < size(); ++k) remember(k);
  }
  const auto c = static_cast<std::size_t>(column);
  if (c >= positions_.size()) return size();
  return positions_[c] < size() && columns_[positions_[c]] == column ? positions_[c] : size();
}

void LinearTerms::remember(std::size_t position) {
  const auto c = static_cast<std::size_t>(columns_[position]);
  if (c >= positions_.size()) positions_.resize(std::max(c + 1, 2 * positions_.size()));
  positions_[c] = position;
}

void LinearTerms::add(int column, double value) {
  const std::size_t position = find(column);
  if (position < size()) {
    values_[position] += value;
    return;
  }
  columns_.push_back(column);
  values_.push_back(value);
  if (size() > kShort) remember(position);
}

void LinearTerms::negate() {
  for (double& value : values_) value = -value;
}

}  // namespace kavo::reader::lp
