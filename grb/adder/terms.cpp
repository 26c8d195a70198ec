#include "grb/adder/terms.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "grb/adder/adder.h"
#include "tav/util/cast.h"

namespace grb {
namespace {

using tav::math::QuadraticFunction;

void requireCoefficient(double coefficient, const std::string& of, int element) {
  if (std::isfinite(coefficient)) return;
  failElement(element, fmt::format("the coefficient {} of {} is not finite", coefficient, of));
}

[[noreturn]] void refuse(const LinearTerms& terms, int element, int variables) {
  for (std::size_t k = 0; k < terms.positions.size(); ++k) {
    const int position = terms.positions[k];
    requirePosition(position, element, variables);
    requireCoefficient(terms.coefficients[k], fmt::format("variable {}", position), element);
  }
  failElement(element, fmt::format("the constant {} is not finite", terms.constant));
}

void refuseProducts(const QuadraticFunction<double>& function, int element, int variables) {
  for (std::size_t k = 0; k < function.values.size(); ++k) {
    requirePosition(function.first[k], element, variables);
    requirePosition(function.second[k], element, variables);
    requireCoefficient(function.values[k], fmt::format("variables {} and {}", function.first[k], function.second[k]),
                       element);
  }
}

void requireSameLength(std::size_t length, std::size_t other, int element) {
  if (length != other) failElement(element, fmt::format("{} positions meet {} others", length, other));
}

}  // namespace

// These two see every nonzero of a model: without a way out of their loops, and without one step waiting for the step
// before it, they run on several terms at once.

// The sums stay 0 unless a number is infinite or none.
bool areFinite(std::span<const double> numbers) {
  constexpr std::size_t kLanes = 8;
  std::array<double, kLanes> sums{};
  std::size_t k = 0;
  for (; k + kLanes <= numbers.size(); k += kLanes) {
    for (std::size_t lane = 0; lane < kLanes; ++lane) sums[lane] += 0.0 * numbers[k + lane];
  }
  for (; k < numbers.size(); ++k) sums[0] += 0.0 * numbers[k];
  return std::all_of(sums.begin(), sums.end(), [](double sum) { return sum == 0; });
}

// Both the position and its distance to the last variable keep their sign bit clear.
bool arePositions(std::span<const int> positions, int variables) {
  const auto last = static_cast<unsigned>(variables - 1);
  unsigned signs = 0;
  for (const int position : positions)
    signs |= (last - static_cast<unsigned>(position)) | static_cast<unsigned>(position);
  return positions.empty() || (variables > 0 && static_cast<int>(signs) >= 0);
}

void requireSound(const LinearTerms& terms, int element, int variables) {
  tav::numCast<int>(terms.positions.size());
  requireSameLength(terms.positions.size(), terms.coefficients.size(), element);
  const bool sound =
      areFinite(terms.coefficients) && arePositions(terms.positions, variables) && std::isfinite(terms.constant);
  if (!sound) refuse(terms, element, variables);
}

void requireSound(const QuadraticFunction<double>& function, int element, int variables) {
  const auto& linear = function.linear;
  requireSound({linear.positions, linear.coefficients, linear.constant}, element, variables);
  tav::numCast<int>(function.first.size());
  requireSameLength(function.first.size(), function.second.size(), element);
  requireSameLength(function.first.size(), function.values.size(), element);
  const bool sound =
      areFinite(function.values) && arePositions(function.first, variables) && arePositions(function.second, variables);
  if (!sound) refuseProducts(function, element, variables);
}

void requirePosition(int position, int element, int variables) {
  if (position < 0 || position >= variables) failElement(element, fmt::format("there is no variable {}", position));
}

void requireSupported(bool condition) {
  if (!condition) throw tav::opt::SupportException("Input not supported", adderLocation());
}

void mergeTerms(std::vector<int>& positions, std::vector<double>& coefficients) {
  std::vector<std::pair<int, double>> terms(positions.size());
  for (std::size_t k = 0; k < terms.size(); ++k) terms[k] = {positions[k], coefficients[k]};
  std::stable_sort(terms.begin(), terms.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  positions.clear();
  coefficients.clear();
  for (const auto& [position, coefficient] : terms) {
    if (!positions.empty() && positions.back() == position) {
      coefficients.back() += coefficient;
    } else {
      positions.push_back(position);
      coefficients.push_back(coefficient);
    }
  }
}

}  // namespace grb
