#pragma once

#include <concepts>
#include <memory>
#include <utility>
#include <vector>

#include "tav/attr/abstract_item.h"

namespace tav::attr {

// A shared item of type T, or nothing. An empty item answers no to every query, counts 0 solutions and refuses the
// rest. Constness of the handle says nothing about the item: handles are copied freely.
template <class T>
class Item {
 public:
  using Value = T;

  Item() = default;

  template <std::derived_from<AbstractItem<T>> I>
  Item(std::shared_ptr<I> item) : item_(std::move(item)) {}  // NOLINT: implicit, an item is its handle

  template <std::derived_from<AbstractItem<T>> I, class... Args>
  static Item make(Args&&... args) {
    return Item(std::make_shared<I>(std::forward<Args>(args)...));
  }

  explicit operator bool() const { return item_ != nullptr; }
  const std::shared_ptr<AbstractItem<T>>& pointer() const { return item_; }

  bool isSettable() const { return item_ && item_->isSettable(); }
  bool isResettable() const { return item_ && item_->isResettable(); }
  bool hasDefault() const { return item_ && item_->hasDefault(); }
  bool hasSolution(int solution) const { return item_ && item_->hasSolution(solution); }
  int solutionCount() const { return item_ ? item_->solutionCount() : 0; }
  std::shared_ptr<const AbstractBaseInfo> info() const { return item_ ? item_->info() : nullptr; }

  void reset() const {
    if (!item_) throw Exception::unsupportedReset(signature::reset(owner()));
    item_->reset();
  }

  std::optional<T> toOptional(const T& raw) const { return checked().toOptional(raw); }

  T getDefault() const {
    if (!hasDefault()) throw Exception::unsupportedDefault(signature::getDefault<T>(owner()));
    return item_->getDefault();
  }

  T get(int solution = 0) const { return checked().get(solution); }
  std::vector<T> getAll() const { return item_ ? item_->getAll() : std::vector<T>(); }

  void set(const T& value, int solution = 0) const {
    if (!item_) throw Exception::unsupportedSet(signature::set<T>(owner()));
    item_->set(value, solution);
  }

 private:
  static std::string owner() { return signature::ownerOf<T>("tav::attr::Item"); }

  const AbstractItem<T>& checked() const {
    if (!item_) throw CheckException::failedTrue("bool(item)");
    return *item_;
  }

  std::shared_ptr<AbstractItem<T>> item_;
};

// A shared item of any type, or nothing.
class BaseItem {
 public:
  BaseItem() = default;

  template <std::derived_from<AbstractBaseItem> I>
  BaseItem(std::shared_ptr<I> item) : item_(std::move(item)) {}  // NOLINT: implicit, an item is its handle

  template <class T>
  BaseItem(const Item<T>& item) : item_(item.pointer()) {}  // NOLINT: implicit, forgets the type only

  explicit operator bool() const { return item_ != nullptr; }
  const std::shared_ptr<AbstractBaseItem>& pointer() const { return item_; }

  ValueType valueType() const { return item_ ? item_->valueType() : ValueType::kNone; }

  // The item with its type, empty when it has another type.
  template <class T>
  Item<T> as() const {
    if (valueType() != ValueTraits<T>::kCode) return {};
    return Item<T>(std::static_pointer_cast<AbstractItem<T>>(item_));
  }

  bool isSettable() const { return item_ && item_->isSettable(); }
  bool isResettable() const { return item_ && item_->isResettable(); }
  bool hasDefault() const { return item_ && item_->hasDefault(); }
  bool hasSolution(int solution) const { return item_ && item_->hasSolution(solution); }
  int solutionCount() const { return item_ ? item_->solutionCount() : 0; }
  std::shared_ptr<const AbstractBaseInfo> info() const { return item_ ? item_->info() : nullptr; }

  void reset() const {
    if (!item_) throw Exception::unsupportedReset(signature::reset("tav::attr::BaseItem"));
    item_->reset();
  }

 private:
  std::shared_ptr<AbstractBaseItem> item_;
};

}  // namespace tav::attr
