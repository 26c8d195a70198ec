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
  // A description that says nothing.
  RangeInfo() = default;

  // The arguments of Info, and the bounds: an absent bound is minus or plus infinity, of int the type's extremes.
  // Raises tav::CheckException unless lower <= default <= upper, the default where there is one; NaN fits nowhere.
  RangeInfo(std::string name, std::optional<int> maxCount, bool isSet, std::optional<T> defaultValue,
            std::optional<T> lower, std::optional<T> upper, std::optional<int> reference,
            std::string_view documentation);

  std::string documentedKind() const override { return "RangeInfo_" + std::string(ValueTraits<T>::kName); }
  T lower() const { return lower_; }
  T upper() const { return upper_; }

  // The value, or the bound next to it; NaN stays.
  T clamp(T value) const { return value < lower_ ? lower_ : value > upper_ ? upper_ : value; }

  bool accepts(const T& value) const override { return value >= lower_ && value <= upper_; }
  void check(const T& value) const override { checkWithin(this->name(), value); }

  std::span<const std::string_view> properties() const override { return kRangeProperties; }
  bool isDefaultProperty(std::string_view property) const override;
  std::string propertyText(std::string_view property) const override;
  void setProperty(std::string_view property, std::string_view text) override;

 private:
  using Limits = std::numeric_limits<T>;
  static constexpr T kLowest = Limits::has_infinity ? -Limits::infinity() : Limits::lowest();
  static constexpr T kHighest = Limits::has_infinity ? Limits::infinity() : Limits::max();

  void checkWithin(std::string_view expression, T value) const;

  T lower_ = kLowest;
  T upper_ = kHighest;
};

extern template class RangeInfo<int>;
extern template class RangeInfo<double>;

}  // namespace tav::attr::lib
