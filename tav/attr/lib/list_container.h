#pragma once

#include <utility>
#include <vector>

#include "tav/attr/container.h"
#include "tav/attr/lib/gather.h"

namespace tav::attr::lib {

// A readable and writable container of fixed size that owns its values.
template <class T, template <class...> class Sequence = std::vector>
class ListContainer final : public AbstractContainer<T> {
 public:
  explicit ListContainer(Sequence<T> values) : values_(std::move(values)) {}

  bool isSettable() const override { return true; }
  int size() const override { return static_cast<int>(values_.size()); }

  using AbstractContainer<T>::get;
  void get(const idx::List& list, std::span<T> values, int /*solution*/) const override {
    gather(list, std::span<const T>(values_), values);
  }

  T get(int index, int /*solution*/) const override {
    checkIndex(index, values_.size());
    return values_[static_cast<std::size_t>(index)];
  }

  using AbstractContainer<T>::set;
  void set(const idx::List& list, std::span<const T> values, int /*solution*/) override {
    scatter(list, values, std::span<T>(values_));
  }

  void set(int index, const T& value, int /*solution*/) override {
    checkIndex(index, values_.size());
    values_[static_cast<std::size_t>(index)] = value;
  }

 private:
  Sequence<T> values_;
};

}  // namespace tav::attr::lib
