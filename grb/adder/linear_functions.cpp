#include "grb/adder/linear_functions.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "tav/opt/support_exception.h"

namespace grb {
namespace {

using tav::opt::SupportException;

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

bool areSound(const LinearTerms& terms, int variables) {
  return areFinite(terms.coefficients) && arePositions(terms.positions, variables) && std::isfinite(terms.constant);
}

void refuse(const LinearTerms& terms, int element, int variables) {
  const auto fail = [element](const std::string& what) {
    throw SupportException(fmt::format("Element {} of the block: {}.", element, what), adderLocation());
  };
  for (std::size_t k = 0; k < terms.positions.size(); ++k) {
    const int position = terms.positions[k];
    if (position < 0 || position >= variables) fail(fmt::format("there is no variable {}", position));
    if (!std::isfinite(terms.coefficients[k])) {
      fail(fmt::format("the coefficient {} of variable {} is not finite", terms.coefficients[k], position));
    }
  }
  fail(fmt::format("the constant {} is not finite", terms.constant));
}

void requireThis(bool condition) {
  if (!condition) throw SupportException("Input not supported", adderLocation());
}

const tav::attr::lib::LinearRows* rowsOf(const tav::attr::BaseContainer& functions) {
  const auto* compressed = dynamic_cast<const tav::attr::lib::LinearRowsContainer*>(functions.pointer().get());
  return compressed == nullptr ? nullptr : &compressed->rows();
}

}  // namespace

LinearFunctions::LinearFunctions(const tav::attr::BaseContainer& functions, int count, const Data& data)
    : functions_(functions.as<Symbol>()), rows_(rowsOf(functions)), count_(count) {
  requireThis(functions_.size() == count);
  const int variables = data.variables.count();
  if (rows_ != nullptr) {
    requireThis(rows_->space == data.variableSpace());
    if (areFinite(rows_->coefficients) && areFinite(rows_->constants) && arePositions(rows_->positions, variables)) {
      return;
    }
  } else {
    for (int i = 0; i < count; ++i) {
      const Symbol symbol = functions_.get(i);
      requireThis(symbol.is(tav::math::SymbolKind::kLinear) && symbol.asLinear().space == data.variableSpace());
    }
  }
  forEach([variables](int i, const LinearTerms& terms) {
    if (!areSound(terms, variables)) refuse(terms, i, variables);
  });
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
