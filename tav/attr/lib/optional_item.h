#pragma once

#include <optional>
#include <utility>

#include "tav/attr/item.h"

namespace tav::attr::lib {

// A value that may be unset. Unset, it reads as its default, or as the type's zero (the empty text) without one.
template <class T>
class OptionalItem final : public AbstractItem<T> {
 public:
  explicit OptionalItem(std::optional<T> defaultValue = std::nullopt) : default_(std::move(defaultValue)) {}

  bool isSettable() const override { return true; }
  bool isResettable() const override { return true; }
  bool hasDefault() const override { return default_.has_value(); }

  // Whether a value was set; the default does not count.
  bool isSet() const { return value_.has_value(); }

  void reset() override { value_.reset(); }

  T getDefault() const override { return default_ ? *default_ : AbstractItem<T>::getDefault(); }
  T get(int /*solution*/) const override { return value_ ? *value_ : default_.value_or(T()); }
  void set(const T& value, int /*solution*/) override { value_ = value; }

 private:
  std::optional<T> default_;
  std::optional<T> value_;
};

}  // namespace tav::attr::lib
