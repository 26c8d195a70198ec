#pragma once

#include <concepts>
#include <memory>
#include <utility>

#include "tav/idx/abstract_list.h"
#include "tav/idx/lib/range.h"

namespace tav::idx {

// A handle that shares an immutable list. Copying it costs a reference count; it always holds a list, the empty one
// when made from nothing.
class List final : public AbstractList {
 public:
  // The list without elements; all handles made from nothing share one.
  class EmptyList;

  List();
  List(const lib::Range& range);  // NOLINT: implicit, a range is a list

  // Shares the given list; a null pointer gives the empty list.
  template <std::derived_from<AbstractList> L>
  List(std::shared_ptr<L> list) : List(std::shared_ptr<const AbstractList>(std::move(list))) {}  // NOLINT: implicit
  List(std::shared_ptr<const AbstractList> list);                                                // NOLINT: implicit

  // A moved-from handle must hold a list too, so moving copies.
  List(const List&) = default;
  List& operator=(const List&) = default;

  Kind kind() const override { return list_->kind(); }
  int size() const override { return list_->size(); }
  int front() const override { return list_->front(); }
  int back() const override { return list_->back(); }
  int min() const override { return list_->min(); }
  int max() const override { return list_->max(); }
  int at(int i) const override { return list_->at(i); }
  bool contains(int value) const override { return list_->contains(value); }
  void copyTo(std::span<int> target) const override { list_->copyTo(target); }
  Values values() const override { return list_->values(); }
  void map(std::span<int> positions) const override { list_->map(positions); }

 private:
  std::shared_ptr<const AbstractList> list_;
};

class List::EmptyList final : public AbstractList {
 public:
  Kind kind() const override { return Kind::kContiguous; }
  int size() const override { return 0; }
  int front() const override { return 0; }
  int back() const override { return -1; }
  int at(int i) const override { return i; }
};

}  // namespace tav::idx
