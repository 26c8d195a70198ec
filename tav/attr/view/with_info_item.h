#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "tav/attr/item.h"

namespace tav::attr::view {

template <class ItemType>
class WithInfoItem;

// An item together with its description. The description gives the default, makes the item resettable when it can be
// set, and keeps values that it does not accept from the item.
template <class T>
class WithInfoItem<Item<T>> final : public AbstractItem<T> {
 public:
  // Neither may be empty.
  WithInfoItem(Item<T> item, std::shared_ptr<const AbstractInfo<T>> info)
      : item_(std::move(item)), info_(std::move(info)) {}

  bool isSettable() const override { return item_.isSettable(); }
  bool isResettable() const override { return item_.isResettable() || (item_.isSettable() && info_->hasDefault()); }
  bool hasDefault() const override { return info_->hasDefault(); }
  bool hasSolution(int solution) const override { return item_.hasSolution(solution); }
  int solutionCount() const override { return item_.solutionCount(); }
  std::shared_ptr<const AbstractBaseInfo> info() const override { return info_; }

  void reset() override {
    if (item_.isResettable() || !isResettable()) {
      item_.reset();
    } else {
      item_.set(info_->getDefault());
    }
  }

  std::optional<T> toOptional(const T& raw) const override { return item_.toOptional(raw); }
  T getDefault() const override { return info_->getDefault(); }
  T get(int solution) const override { return item_.get(solution); }
  std::vector<T> getAll() const override { return item_.getAll(); }
  void set(const T& value, int solution) override {
    info_->check(value);
    item_.set(value, solution);
  }

 private:
  Item<T> item_;
  std::shared_ptr<const AbstractInfo<T>> info_;
};

}  // namespace tav::attr::view
