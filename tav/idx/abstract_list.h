#pragma once

#include <cstdint>
#include <span>

#include "tav/idx/values.h"

namespace tav::idx {

// What may be assumed about the order of a list.
enum class Kind : std::uint8_t {
  kUnordered = 0,   // nothing; elements may repeat
  kContiguous = 1,  // element i is first + i
  kIncreasing = 2,  // strictly increasing
};

// An immutable sequence of 0-based positions of model elements. The bodies given here are written in terms of kind,
// size, front, back and at; an implementation overrides what it can do faster.
class AbstractList {
 public:
  virtual ~AbstractList() = default;

  virtual Kind kind() const = 0;
  virtual int size() const = 0;   // number of elements
  virtual int front() const = 0;  // first element; of an empty range: where it would start
  virtual int back() const = 0;   // last element; of an empty range: front() - 1

  // Smallest and largest element. An empty unordered list gives INT_MAX and INT_MIN, so that a range test against it
  // always fails.
  virtual int min() const;
  virtual int max() const;

  virtual int at(int i) const = 0;  // element at position i, 0 <= i < size(), not checked
  virtual bool contains(int value) const;

  // Writes all elements, in order, to the front of `target`, which holds at least size() entries.
  virtual void copyTo(std::span<int> target) const;

  // All elements as one sequence; without a copy where the list has them stored.
  virtual Values values() const;

  // Replaces every entry x of `positions` by at(x): positions within this list become its elements.
  virtual void map(std::span<int> positions) const;

 protected:
  AbstractList() = default;
  AbstractList(const AbstractList&) = default;
  AbstractList(AbstractList&&) = default;
  AbstractList& operator=(const AbstractList&) = default;
  AbstractList& operator=(AbstractList&&) = default;
};

}  // namespace tav::idx
