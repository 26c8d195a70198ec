#include "tav/idx/abstract_list.h"

#include <algorithm>
#include <limits>

namespace tav::idx {

namespace {

bool containsSorted(const AbstractList& list, int value) {
  if (list.size() < 1 || value < list.min() || value > list.max()) return false;
  int first = 0;
  int count = list.size();
  while (count > 0) {
    const int half = count / 2;
    if (list.at(first + half) < value) {
      first += half + 1;
      count -= half + 1;
    } else {
      count = half;
    }
  }
  return list.at(first) == value;
}

}  // namespace

int AbstractList::min() const {
  if (kind() != Kind::kUnordered) return front();
  int smallest = std::numeric_limits<int>::max();
  for (int i = 0, n = size(); i < n; ++i) smallest = std::min(smallest, at(i));
  return smallest;
}

int AbstractList::max() const {
  if (kind() != Kind::kUnordered) return back();
  int largest = std::numeric_limits<int>::min();
  for (int i = 0, n = size(); i < n; ++i) largest = std::max(largest, at(i));
  return largest;
}

bool AbstractList::contains(int value) const {
  switch (kind()) {
    case Kind::kContiguous:
      return size() >= 1 && front() <= value && value <= back();
    case Kind::kIncreasing:
      return containsSorted(*this, value);
    case Kind::kUnordered:
      break;
  }
  for (int i = 0, n = size(); i < n; ++i) {
    if (at(i) == value) return true;
  }
  return false;
}

void AbstractList::copyTo(std::span<int> target) const {
  for (int i = 0, n = size(); i < n; ++i) target[static_cast<std::size_t>(i)] = at(i);
}

Values AbstractList::values() const {
  std::vector<int> elements(static_cast<std::size_t>(size()));
  copyTo(elements);
  return Values(std::move(elements));
}

void AbstractList::map(std::span<int> positions) const {
  for (int& position : positions) position = at(position);
}

}  // namespace tav::idx
