#pragma once

#include <fmt/format.h>

#include <cmath>
#include <limits>
#include <string_view>

#include "kavo/reader/nl/draft.h"
#include "kavo/reader/nl/pieces.h"

namespace kavo::reader::nl {

// The segments b, the bounds of the variables, and r, the sides of the rows.
template <class Source>
class BoundSegments {
 public:
  BoundSegments(Source& source, Draft& draft)
      : source_(source), draft_(draft), header_(draft.header), model_(draft.model) {}

  void readBounds() {
    once(source_, draft_.bounds);
    draft_.bounds = true;
    source_.endLine();
    constexpr std::string_view kExpected = "a kind of bounds (0 to 4)";
    auto& columns = model_.columns;
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (readPair(kExpected, columns.lower[i], columns.upper[i]) != '\0') source_.fail(kExpected);
      source_.endLine();
    }
  }

  void readSides() {
    once(source_, draft_.sides);
    draft_.sides = true;
    source_.endLine();
    constexpr std::string_view kExpected = "a kind of sides (0 to 5)";
    auto& rows = model_.rows;
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const char other = readPair(kExpected, rows.lower[i], rows.upper[i]);
      if (other == '5') {
        readComplement(i);
      } else if (other != '\0') {
        source_.fail(kExpected);
      }
      source_.endLine();
    }
  }

 private:
  // A bound, with infinite ones as such.
  double bound() {
    constexpr double kNone = std::numeric_limits<double>::infinity();
    const double value = source_.number("a bound");
    if (std::isnan(value)) source_.fail("a bound");
    if (value >= kInfinity) return kNone;
    return value <= -kInfinity ? -kNone : value;
  }

  // No number is above the one, or below the other.
  double lowerEnd() {
    const double value = bound();
    if (value >= kInfinity) source_.fail("a lower end below 1e20");
    return value;
  }

  double upperEnd() {
    const double value = bound();
    if (value <= -kInfinity) source_.fail("an upper end above -1e20");
    return value;
  }

  // Reads a pair of bounds, which was infinite before. Returns the letter when it is no pair of bounds.
  char readPair(std::string_view expected, double& lower, double& upper) {
    const char type = source_.letter(expected);
    switch (type) {
      case '0':
        lower = lowerEnd();
        upper = upperEnd();
        return '\0';
      case '1':
        upper = upperEnd();
        return '\0';
      case '2':
        lower = lowerEnd();
        return '\0';
      case '3':
        return '\0';
      case '4':
        lower = upper = bound();
        if (!std::isfinite(lower)) source_.fail("a finite number behind 4 (equal to)");
        return '\0';
      default:
        return type;
    }
  }

  // A row that complements a variable: which of its sides are at 0 is told by which bounds of the variable are finite.
  void readComplement(std::size_t row) {
    const int flags = below(source_, 4, "which bounds of the complementing variable are finite,");
    const int variable = source_.integer("the number of a variable");
    if (variable < 1 || variable > header_.variables) {
      source_.refuse(
          fmt::format("expected the number of a variable from 1 to {}, found {}", header_.variables, variable));
    }
    if ((flags & 2) == 0) model_.rows.lower[row] = 0;
    if ((flags & 1) == 0) model_.rows.upper[row] = 0;
    model_.complementarity.push_back({static_cast<int>(row), variable - 1, flags});
  }

  Source& source_;
  Draft& draft_;
  const Header& header_;
  Model& model_;
};

}  // namespace kavo::reader::nl
