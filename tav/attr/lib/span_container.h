#pragma once

#include <memory>
#include <span>
#include <utility>

#include "tav/attr/container.h"
#include "tav/attr/lib/gather.h"

namespace tav::attr::lib {

// A read-only container over somebody's contiguous array: the columns of a model are handed out in this way, without a
// copy. The array must outlive the container unless `owner` keeps it alive.
template <class T>
class SpanContainer final : public AbstractContainer<T> {
 public:
  explicit SpanContainer(std::span<const T> values, std::shared_ptr<const void> owner = nullptr)
      : values_(values), owner_(std::move(owner)) {}

  using AbstractContainer<T>::get;
  int size() const override { return static_cast<int>(values_.size()); }

  void get(const idx::List& list, std::span<T> values, int /*solution*/) const override {
    gather(list, values_, values);
  }

  T get(int index, int /*solution*/) const override {
    checkIndex(index, values_.size());
    return values_[static_cast<std::size_t>(index)];
  }

  // The array itself, for readers that need no copy.
  std::span<const T> span() const { return values_; }

 private:
  std::span<const T> values_;
  std::shared_ptr<const void> owner_;
};

template <class T>
attr::Container<T> viewOf(std::span<const T> values, std::shared_ptr<const void> owner = nullptr) {
  return attr::Container<T>::template make<SpanContainer<T>>(values, std::move(owner));
}

}  // namespace tav::attr::lib
