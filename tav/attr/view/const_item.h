#pragma once

#include <utility>
#include <vector>

#include "tav/attr/item.h"

namespace tav::attr::view {

template <class ItemType>
class ConstItem;

// An item that can only be read.
template <class T>
class ConstItem<Item<T>> final : public AbstractItem<T> {
 public:
  explicit ConstItem(Item<T> item) : item_(std::move(item)) {}

  bool hasDefault() const override { return item_.hasDefault(); }
  bool hasSolution(int solution) const override { return item_.hasSolution(solution); }
  int solutionCount() const override { return item_.solutionCount(); }
  std::shared_ptr<const AbstractBaseInfo> info() const override { return item_.info(); }
  std::optional<T> toOptional(const T& raw) const override { return item_.toOptional(raw); }
  T getDefault() const override { return item_.getDefault(); }
  T get(int solution) const override { return item_.get(solution); }
  std::vector<T> getAll() const override { return item_.getAll(); }

 private:
  Item<T> item_;
};

}  // namespace tav::attr::view
