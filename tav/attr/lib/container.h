#pragma once

#include <utility>
#include <vector>

#include "tav/attr/container.h"
#include "tav/attr/lib/gather.h"

namespace tav::attr::lib {

// A read-only container that owns its values.
template <class T, template <class...> class Sequence = std::vector>
class Container final : public AbstractContainer<T> {
 public:
  explicit Container(Sequence<T> values) : values_(std::move(values)) {}

  using AbstractContainer<T>::get;
  int size() const override { return static_cast<int>(values_.size()); }

  void get(const idx::List& list, std::span<T> values, int /*solution*/) const override {
    gather(list, std::span<const T>(values_), values);
  }

  T get(int index, int /*solution*/) const override {
    checkIndex(index, values_.size());
    return values_[static_cast<std::size_t>(index)];
  }

 private:
  Sequence<T> values_;
};

}  // namespace tav::attr::lib
