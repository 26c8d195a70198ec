#pragma once

#include <span>
#include <utility>

#include "tav/attr/container.h"
#include "tav/attr/item.h"
#include "tav/attr/lib/gather.h"

namespace tav::attr::view {

template <class ItemType>
class SingleItemContainer;

// One item shown as a container whose only index is 0.
template <class T>
class SingleItemContainer<Item<T>> : public AbstractContainer<T> {
 public:
  explicit SingleItemContainer(Item<T> item) : item_(std::move(item)) {}

  bool isSettable() const override { return item_.isSettable(); }
  bool isResettable() const override { return item_.isResettable(); }
  bool hasDefault() const override { return item_.hasDefault(); }
  bool hasSolution(int solution) const override { return item_.hasSolution(solution); }
  bool hasSettableSolution(int solution) const override { return item_.hasSolution(solution); }
  int size() const override { return 1; }
  int solutionCount() const override { return item_.solutionCount(); }
  void reset() override { item_.reset(); }

  using AbstractContainer<T>::getDefault;
  std::optional<T> toOptional(const T& raw) const override { return item_.toOptional(raw); }
  T getDefault() const override { return item_.getDefault(); }

  using AbstractContainer<T>::get;
  void get(const idx::List& list, std::span<T> values, int solution) const override {
    lib::checkAccess(list, values.size(), 1);
    if (list.size() == 0) return;
    const T value = item_.get(solution);
    for (int k = 0; k < list.size(); ++k) values[static_cast<std::size_t>(k)] = value;
  }

  T get(int index, int solution) const override {
    lib::checkIndex(index, 1);
    return item_.get(solution);
  }

  using AbstractContainer<T>::set;
  void set(const idx::List& list, std::span<const T> values, int solution) override {
    lib::checkAccess(list, values.size(), 1);
    if (list.size() > 0) item_.set(values[static_cast<std::size_t>(list.size()) - 1], solution);
  }

  void set(int index, const T& value, int solution) override {
    lib::checkIndex(index, 1);
    item_.set(value, solution);
  }

 private:
  Item<T> item_;
};

}  // namespace tav::attr::view
