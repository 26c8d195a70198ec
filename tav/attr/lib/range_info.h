#pragma once

#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "tav/attr/lib/info.h"

namespace tav::attr::lib {

// The description of a number with bounds, both included. T is int or double.
template <class T>
class RangeInfo final : public Info<T> {
 public:
  // The arguments of Info, and the bounds: an absent bound is minus or plus infinity, of int the type's extremes.
  // Raises tav::CheckException unless lower <= default <= upper, the default where there is one; NaN fits nowhere.
  RangeInfo(std::string name, std::optional<int> maxCount, bool isSet, std::optional<T> defaultValue,
            std::optional<T> lower, std::optional<T> upper, std::optional<int> reference,
            std::string_view documentation);

  T lower() const { return lower_; }
  T upper() const { return upper_; }

  // The value, or the bound next to it; NaN stays.
  T clamp(T value) const { return value < lower_ ? lower_ : value > upper_ ? upper_ : value; }

  bool accepts(const T& value) const override { return value >= lower_ && value <= upper_; }

  bool hasProperty(std::string_view property) const override {
    return property == "lo" || property == "up" || Info<T>::hasProperty(property);
  }

  bool isDefaultProperty(std::string_view property) const override {
    if (property == "lo") return lower_ == kLowest;
    if (property == "up") return upper_ == kHighest;
    return Info<T>::isDefaultProperty(property);
  }

  bool isTrivial() const override { return isDefaultProperty("lo") && isDefaultProperty("up") && Info<T>::isTrivial(); }

 private:
  using Limits = std::numeric_limits<T>;
  static constexpr T kLowest = Limits::has_infinity ? -Limits::infinity() : Limits::lowest();
  static constexpr T kHighest = Limits::has_infinity ? Limits::infinity() : Limits::max();

  T lower_;
  T upper_;
};

extern template class RangeInfo<int>;
extern template class RangeInfo<double>;

}  // namespace tav::attr::lib
