#pragma once

#include <algorithm>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "tav/attr/abstract_base_info.h"
#include "tav/attr/lib/property_text.h"

namespace tav::attr::lib {

// The description of an item without bounds. Immutable once shared.
template <class T>
class Info : public AbstractInfo<T> {
 public:
  // A description that says nothing.
  Info() : Info({}, std::nullopt, false, std::nullopt, std::nullopt, {}) {}

  // maxCount: how many values the item may carry; absent: no limit; below 2: one. isSet: the item can be set by a user.
  // reference: number of the item in the documentation it comes from.
  Info(std::string name, std::optional<int> maxCount, bool isSet, std::optional<T> defaultValue,
       std::optional<int> reference, std::string_view documentation)
      : name_(std::move(name)),
        maxCount_(atLeastOne(maxCount)),
        isSet_(isSet),
        default_(std::move(defaultValue)),
        reference_(reference),
        documentation_(documentation) {}

  std::string documentedKind() const override { return "Info_" + std::string(ValueTraits<T>::kName); }
  const std::string& name() const override { return name_; }
  std::optional<int> maxCount() const override { return maxCount_; }
  bool isSet() const override { return isSet_; }
  std::optional<int> reference() const override { return reference_; }
  std::string_view documentation() const override { return documentation_; }

  // The number of values the item may carry, the largest int when there is no limit.
  int countLimit() const { return maxCount_.value_or(std::numeric_limits<int>::max()); }

  bool hasDefault() const override { return default_.has_value(); }
  T getDefault() const override {
    if (default_) return *default_;
    throw Exception::unsupportedDefault(signature::getDefault<T>(signature::ownerOf<T>("tav::attr::lib::Info")));
  }

  bool accepts(const T& /*value*/) const override { return true; }
  void check(const T& /*value*/) const override {}

  std::span<const std::string_view> properties() const override { return kInfoProperties; }
  bool isTrivial() const override {
    const auto all = this->properties();
    return std::all_of(all.begin(), all.end(), [this](std::string_view p) { return this->isDefaultProperty(p); });
  }

  bool isDefaultProperty(std::string_view property) const override;
  std::string propertyText(std::string_view property) const override;
  void setProperty(std::string_view property, std::string_view text) override;

 private:
  static std::optional<int> atLeastOne(std::optional<int> count) {
    return count ? std::optional<int>(std::max(*count, 1)) : std::nullopt;
  }

  std::string name_;
  std::optional<int> maxCount_;
  bool isSet_;
  std::optional<T> default_;
  std::optional<int> reference_;
  std::string documentation_;
};

extern template class Info<int>;
extern template class Info<double>;
extern template class Info<std::string>;

}  // namespace tav::attr::lib
