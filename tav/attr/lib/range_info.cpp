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
  if (!defaultValue) return;
  if (!(*defaultValue >= lower_)) throw CheckException::failedGreaterOrEqualTo("default_value", *defaultValue, lower_);
  if (!(*defaultValue <= upper_)) throw CheckException::failedLessOrEqualTo("default_value", *defaultValue, upper_);
}

template class RangeInfo<int>;
template class RangeInfo<double>;

}  // namespace tav::attr::lib
