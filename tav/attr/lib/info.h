#pragma once

#include <algorithm>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "tav/attr/abstract_base_info.h"

namespace tav::attr::lib {

// The description of an item without bounds.
template <class T>
class Info : public AbstractInfo<T> {
 public:
  // maxCount: how many values the item may carry; absent: no limit; below 2: one. isSet: the item can be set by a user.
  // reference: number of the item in the documentation it comes from. documentation: must outlive the info.
  Info(std::string name, std::optional<int> maxCount, bool isSet, std::optional<T> defaultValue,
       std::optional<int> reference, std::string_view documentation)
      : name_(std::move(name)),
        maxCount_(maxCount ? std::optional<int>(std::max(*maxCount, 1)) : std::nullopt),
        isSet_(isSet),
        default_(std::move(defaultValue)),
        reference_(reference),
        documentation_(documentation) {}

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

  bool hasProperty(std::string_view property) const override {
    return std::find(std::begin(kProperties), std::end(kProperties), property) != std::end(kProperties);
  }

  bool isDefaultProperty(std::string_view property) const override {
    if (property == "name") return name_.empty();
    if (property == "ref") return !reference_;
    if (property == "n_max") return !maxCount_;
    if (property == "s_set") return !isSet_;
    if (property == "doc") return documentation_.empty();
    if (property == "def") return !default_;
    return true;
  }

  bool isTrivial() const override {
    return std::all_of(std::begin(kProperties), std::end(kProperties),
                       [this](std::string_view property) { return isDefaultProperty(property); });
  }

 private:
  static constexpr std::string_view kProperties[] = {"name", "ref", "n_max", "s_set", "doc", "def"};

  std::string name_;
  std::optional<int> maxCount_;
  bool isSet_;
  std::optional<T> default_;
  std::optional<int> reference_;
  std::string_view documentation_;
};

}  // namespace tav::attr::lib
