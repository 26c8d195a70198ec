#include "kavo/model/append_parts.h"

#include <fmt/format.h>

#include <climits>
#include <cmath>

#include "kavo/error.h"
#include "kavo/model/element.h"

namespace kavo {

void Place::fail(std::size_t i, const std::string& what) const {
  throw Error(KAVO_INVALID, describeElement(kind, first + i, names ? names[i] : nullptr) + ": " + what);
}

ExistingPlace::ExistingPlace(const Model& model, int kind, long long element) : kind_(kind) {
  if (kind != KAVO_ROW && kind != KAVO_OBJECTIVE) {
    throw Error(KAVO_INVALID, "only rows and objectives have quadratic terms and expressions");
  }
  index_ = checkElement(model, kind, element);
  name_ = givenName(model, kind, index_);
}

void checkCount(const char* what, std::size_t present, std::size_t more) {
  if (more > static_cast<std::size_t>(INT_MAX) - present) {
    throw Error(KAVO_INVALID,
                fmt::format("{} {} more than {} exceed the {} that a model can have", more, what, present, INT_MAX));
  }
}

void checkStarts(const char* what, std::size_t count, const std::size_t* start) {
  if (count == 0) return;
  if (start == nullptr) throw Error(KAVO_INVALID, fmt::format("the {} starts are null", what));
  if (start[0] != 0) {
    throw Error(KAVO_INVALID, fmt::format("the {} starts begin with {}, not with 0", what, start[0]));
  }
  for (std::size_t i = 0; i < count; ++i) {
    if (start[i + 1] < start[i]) {
      throw Error(KAVO_INVALID,
                  fmt::format("{} starts decrease from {} to {} at {} {}", what, start[i], start[i + 1], what, i));
    }
  }
}

void checkColumn(const Place& place, std::size_t element, std::size_t k, int column, std::size_t columns) {
  if (column >= 0 && static_cast<std::size_t>(column) < columns) return;
  place.fail(element, fmt::format("column {} of term {} does not exist: the model has {} columns", column, k, columns));
}

void checkLower(const Place& place, std::size_t element, double lower) {
  if (!(lower < kInfinity)) place.fail(element, fmt::format("lower bound {} must be a number below 1e20", lower));
}

void checkUpper(const Place& place, std::size_t element, double upper) {
  if (!(upper > -kInfinity)) place.fail(element, fmt::format("upper bound {} must be a number above -1e20", upper));
}

void checkCoefficient(const Place& place, std::size_t element, double value, int column) {
  if (std::fabs(value) < kInfinity) return;
  place.fail(element, fmt::format("coefficient {} of column {} must be a number below 1e20", value, column));
}

void checkConstant(const Place& place, std::size_t element, double constant) {
  if (!std::isfinite(constant)) place.fail(element, fmt::format("the constant {} must be a finite number", constant));
}

void appendNames(Names& to, const char* const* names, std::size_t count, std::size_t present) {
  if (names == nullptr) return to.appendUnnamed(count);
  for (std::size_t i = 0; i < count; ++i) to.append(names[i] ? names[i] : "", present + i);
}

}  // namespace kavo
