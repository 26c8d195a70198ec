#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <span>
#include <vector>

#include "tav/attr/container.h"
#include "tav/attr/lib/gather.h"

namespace tav::attr::lib {

// Values per index that may be unset. An unset index reads as the mark given at construction: NaN for double, INT_MIN
// for int where no other is chosen. The container grows as it is written to; the indices that a write skips, and those
// beyond the end, are unset.
template <class T, template <class...> class Sequence = std::vector>
class OptionalContainer final : public AbstractContainer<T> {
 public:
  static constexpr T kUnset =
      std::numeric_limits<T>::has_quiet_NaN ? std::numeric_limits<T>::quiet_NaN() : std::numeric_limits<T>::min();

  explicit OptionalContainer(T unset = kUnset) : unset_(unset) {}

  bool isSettable() const override { return true; }
  bool isResettable() const override { return true; }
  int size() const override { return static_cast<int>(values_.size()); }
  int itemCount() const override {
    return static_cast<int>(std::count_if(values_.begin(), values_.end(), IsSet{unset_}));
  }

  // Makes every index unset; the size stays.
  void reset() override { std::fill(values_.begin(), values_.end(), unset_); }

  std::optional<T> toOptional(const T& raw) const override {
    return IsSet{unset_}(raw) ? std::optional<T>(raw) : std::nullopt;
  }

  using AbstractContainer<T>::get;
  void get(const idx::List& list, std::span<T> values, int /*solution*/) const override {
    checkAccess(list, values.size(), kNoLimit);
    idx::visit(list, [&](int k, int index) { values[static_cast<std::size_t>(k)] = valueAt(index); });
  }

  T get(int index, int /*solution*/) const override {
    checkIndex(index, kNoLimit);
    return valueAt(index);
  }

  using AbstractContainer<T>::set;
  void set(const idx::List& list, std::span<const T> values, int /*solution*/) override {
    checkAccess(list, values.size(), kNoLimit);
    if (list.size() == 0) return;
    growTo(list.max() + std::size_t{1});
    scatter(list, values, std::span<T>(values_));
  }

  void set(int index, const T& value, int /*solution*/) override {
    checkIndex(index, kNoLimit);
    growTo(index + std::size_t{1});
    values_[static_cast<std::size_t>(index)] = value;
  }

  void itemAdd(int index, const T& value) override { set(index, value, 0); }

  // Pads with unset indices up to `size`; never shrinks.
  void growTo(std::size_t size) {
    if (size > values_.size()) values_.resize(size, unset_);
  }

 private:
  static constexpr std::size_t kNoLimit = std::numeric_limits<int>::max() + std::size_t{1};

  struct IsSet {
    T unset;
    bool operator()(const T& value) const {
      if constexpr (std::numeric_limits<T>::has_quiet_NaN) {
        if (std::isnan(unset)) return !std::isnan(value);
      }
      return value != unset;
    }
  };

  T valueAt(int index) const {
    const auto i = static_cast<std::size_t>(index);
    return i < values_.size() ? values_[i] : unset_;
  }

  T unset_;
  Sequence<T> values_;
};

}  // namespace tav::attr::lib
