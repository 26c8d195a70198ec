#pragma once

#include <memory>
#include <optional>
#include <utility>

#include "tav/attr/abstract_base_info.h"
#include "tav/attr/item.h"

namespace tav::attr::lib {

// A value that may be unset. Unset, it reads as its default, or as the type's zero (the empty text) without one. An
// item that is made with a description has its default and takes only values that it accepts.
template <class T>
class OptionalItem final : public AbstractItem<T> {
 public:
  explicit OptionalItem(std::optional<T> defaultValue = std::nullopt) : default_(std::move(defaultValue)) {}

  explicit OptionalItem(std::shared_ptr<const AbstractInfo<T>> info) : info_(std::move(info)) {
    if (info_->hasDefault()) default_ = info_->getDefault();
  }

  bool isSettable() const override { return true; }
  bool isResettable() const override { return true; }
  bool hasDefault() const override { return default_.has_value(); }

  // Whether a value was set; the default does not count.
  bool isSet() const { return value_.has_value(); }

  void reset() override { value_.reset(); }

  T getDefault() const override { return default_ ? *default_ : AbstractItem<T>::getDefault(); }
  T get(int /*solution*/) const override { return value_ ? *value_ : default_.value_or(T()); }

  void set(const T& value, int /*solution*/) override {
    if (info_) info_->check(value);
    value_ = value;
  }

  std::shared_ptr<const AbstractBaseInfo> info() const override { return info_; }

 private:
  std::shared_ptr<const AbstractInfo<T>> info_;
  std::optional<T> default_;
  std::optional<T> value_;
};

}  // namespace tav::attr::lib
