#include "tav/attr/lib/range_info.h"

#include <utility>

#include "tav/util/exception.h"

namespace tav::attr::lib {

template <class T>
RangeInfo<T>::RangeInfo(std::string name, std::optional<int> maxCount, bool isSet, std::optional<T> defaultValue,
                        std::optional<T> lower, std::optional<T> upper, std::optional<int> reference,
                        std::string_view documentation)
    : Info<T>(std::move(name), maxCount, isSet, defaultValue, reference, documentation),
      lower_(lower.value_or(kLowest)),
      upper_(upper.value_or(kHighest)) {
  if (!(lower_ <= upper_)) throw CheckException::failedLessOrEqualTo("lower_bound", lower_, upper_);
  if (defaultValue) checkWithin("default_value", *defaultValue);
}

template <class T>
void RangeInfo<T>::checkWithin(std::string_view expression, T value) const {
  if (!(value >= lower_)) throw CheckException::failedGreaterOrEqualTo(expression, value, lower_);
  if (!(value <= upper_)) throw CheckException::failedLessOrEqualTo(expression, value, upper_);
}

template <class T>
bool RangeInfo<T>::isDefaultProperty(std::string_view property) const {
  if (property == "lo") return lower_ == kLowest;
  if (property == "up") return upper_ == kHighest;
  return Info<T>::isDefaultProperty(property);
}

template <class T>
std::string RangeInfo<T>::propertyText(std::string_view property) const {
  if (property == "lo") return isDefaultProperty(property) ? "" : fmt::format("{}", lower_);
  if (property == "up") return isDefaultProperty(property) ? "" : fmt::format("{}", upper_);
  return Info<T>::propertyText(property);
}

template <class T>
void RangeInfo<T>::setProperty(std::string_view property, std::string_view text) {
  if (property != "lo" && property != "up") return Info<T>::setProperty(property, text);
  const auto bound = parseText<T>(text);
  if (!bound) throwUnsupportedProperty(property, text);
  const T lower = property == "lo" ? *bound : lower_;
  const T upper = property == "up" ? *bound : upper_;
  const auto isInside = [&](T value) { return lower <= value && value <= upper; };
  if (!(lower <= upper) || (this->hasDefault() && !isInside(this->getDefault()))) {
    throwUnsupportedProperty(property, text);
  }
  lower_ = lower;
  upper_ = upper;
}

template class RangeInfo<int>;
template class RangeInfo<double>;

}  // namespace tav::attr::lib
