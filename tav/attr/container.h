#pragma once

#include <concepts>
#include <memory>
#include <utility>
#include <vector>

#include "tav/attr/abstract_container.h"

namespace tav::attr {

// A shared container of type T, or nothing. An empty handle answers no to every query, counts 0 everywhere, reads
// nothing and refuses the rest. Constness of the handle says nothing about the container: handles are copied freely.
template <class T>
class Container {
 public:
  using Value = T;

  Container() = default;

  template <std::derived_from<AbstractContainer<T>> C>
  Container(std::shared_ptr<C> container) : container_(std::move(container)) {}  // NOLINT: implicit

  template <std::derived_from<AbstractContainer<T>> C, class... Args>
  static Container make(Args&&... args) {
    return Container(std::make_shared<C>(std::forward<Args>(args)...));
  }

  explicit operator bool() const { return container_ != nullptr; }
  const std::shared_ptr<AbstractContainer<T>>& pointer() const { return container_; }

  bool isSettable() const { return container_ && container_->isSettable(); }
  bool isResettable() const { return container_ && container_->isResettable(); }
  bool hasDefault() const { return container_ && container_->hasDefault(); }
  bool hasSolution(int solution) const { return container_ && container_->hasSolution(solution); }
  bool hasSettableSolution(int solution) const { return container_ && container_->hasSettableSolution(solution); }
  int size() const { return container_ ? container_->size() : 0; }
  int solutionCount() const { return container_ ? container_->solutionCount() : 0; }
  int itemCount() const { return container_ ? container_->itemCount() : 0; }

  void reset() const {
    if (!container_) throw Exception::unsupportedReset(signature::reset(owner()));
    container_->reset();
  }

  std::optional<T> toOptional(const T& raw) const { return checked().toOptional(raw); }

  T getDefault() const {
    if (!hasDefault()) throw Exception::unsupportedDefault(signature::getDefault<T>(owner()));
    return container_->getDefault();
  }

  T getDefault(int index) const {
    if (!hasDefault()) throw Exception::unsupportedDefault(signature::getDefault<T>(owner()));
    return container_->getDefault(index);
  }

  // Reads as described at AbstractContainer; of an empty handle, `values` is left as it is.
  void get(const idx::List& list, std::span<T> values, int solution = 0) const {
    if (container_) container_->get(list, values, solution);
  }
  void getAll(std::span<T> values, int solution = 0) const {
    if (container_) container_->getAll(values, solution);
  }

  T get(int index, int solution = 0) const { return checked().get(index, solution); }

  std::vector<T> getValues(const idx::List& list, int solution = 0) const {
    return checked().getValues(list, solution);
  }
  std::vector<std::optional<T>> getOptional(const idx::List& list, int solution = 0) const {
    return checked().getOptional(list, solution);
  }

  // All values of a solution as a vector; of an empty handle, none.
  std::vector<T> getAll(int solution = 0) const {
    std::vector<T> values(static_cast<std::size_t>(size()));
    getAll(std::span<T>(values), solution);
    return values;
  }

  void set(const idx::List& list, std::span<const T> values, int solution = 0) const {
    if (!container_) throw Exception::unsupportedSet(signature::setList<T>(owner()));
    container_->set(list, values, solution);
  }
  void set(const idx::List& list, const Container& other) const {
    if (!container_) throw Exception::unsupportedSet(signature::setList<T>(owner()));
    container_->set(list, other);
  }
  void set(int index, const T& value, int solution = 0) const {
    if (!container_) throw Exception::unsupportedSet(signature::setOne<T>(owner()));
    container_->set(index, value, solution);
  }
  void setAll(std::span<const T> values, int solution = 0) const {
    if (!container_) throw Exception::unsupportedSet(signature::setAll<T>(owner()));
    container_->setAll(values, solution);
  }

  void itemAdd(int index, const T& value) const {
    if (!container_) throw Exception::unsupportedItemAdd(signature::itemAdd<T>(owner()));
    container_->itemAdd(index, value);
  }

 private:
  static std::string owner() { return signature::ownerOf<T>("tav::attr::Container"); }

  const AbstractContainer<T>& checked() const {
    if (!container_) throw CheckException::failedTrue("bool(container)");
    return *container_;
  }

  std::shared_ptr<AbstractContainer<T>> container_;
};

// A shared container of any type, or nothing.
class BaseContainer {
 public:
  BaseContainer() = default;

  template <std::derived_from<AbstractBaseContainer> C>
  BaseContainer(std::shared_ptr<C> container) : container_(std::move(container)) {}  // NOLINT: implicit

  template <class T>
  BaseContainer(const Container<T>& container) : container_(container.pointer()) {}  // NOLINT: implicit

  explicit operator bool() const { return container_ != nullptr; }
  const std::shared_ptr<AbstractBaseContainer>& pointer() const { return container_; }

  ValueType valueType() const { return container_ ? container_->valueType() : ValueType::kNone; }

  // The container with its type, empty when it has another type.
  template <class T>
  Container<T> as() const {
    if (valueType() != ValueTraits<T>::kCode) return {};
    return Container<T>(std::static_pointer_cast<AbstractContainer<T>>(container_));
  }

  bool isSettable() const { return container_ && container_->isSettable(); }
  bool isResettable() const { return container_ && container_->isResettable(); }
  bool hasDefault() const { return container_ && container_->hasDefault(); }
  bool hasSolution(int solution) const { return container_ && container_->hasSolution(solution); }
  bool hasSettableSolution(int solution) const { return container_ && container_->hasSettableSolution(solution); }
  int size() const { return container_ ? container_->size() : 0; }
  int solutionCount() const { return container_ ? container_->solutionCount() : 0; }
  int itemCount() const { return container_ ? container_->itemCount() : 0; }

  void reset() const {
    if (!container_) throw Exception::unsupportedReset(signature::reset("tav::attr::BaseContainer"));
    container_->reset();
  }

 private:
  std::shared_ptr<AbstractBaseContainer> container_;
};

template <class T>
void AbstractContainer<T>::set(const idx::List& list, const Container<T>& other) {
  if (other.size() != list.size()) {
    throw CheckException::failedEqualTo("list.size()", list.size(), {"other.size()", other.size()});
  }
  const std::vector<T> values = other.getAll();
  set(list, std::span<const T>(values), 0);
}

}  // namespace tav::attr
