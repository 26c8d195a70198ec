#include "grb/adder/linear_functions.h"

#include <fmt/core.h>

#include <cmath>

#include "tav/opt/support_exception.h"

namespace grb {
namespace {

using tav::opt::SupportException;

// One comparison chain per term and nothing else on the good path: this loop sees every nonzero of a model.
bool areTermsSound(const LinearFunction<double>& function, int variables) {
  bool sound = std::isfinite(function.constant);
  const auto limit = static_cast<unsigned>(variables);
  for (std::size_t k = 0; k < function.positions.size(); ++k) {
    sound &= static_cast<unsigned>(function.positions[k]) < limit;
    sound &= std::isfinite(function.coefficients[k]);
  }
  return sound;
}

[[noreturn]] void refuse(const LinearFunction<double>& function, int element, int variables) {
  for (std::size_t k = 0; k < function.positions.size(); ++k) {
    const int position = function.positions[k];
    if (position < 0 || position >= variables) {
      throw SupportException(
          fmt::format("Element {} of the block names variable {} of {}.", element, position, variables),
          adderLocation());
    }
    if (!std::isfinite(function.coefficients[k])) {
      throw SupportException(fmt::format("Element {} of the block: the coefficient {} of variable {} is not finite.",
                                         element, function.coefficients[k], position),
                             adderLocation());
    }
  }
  throw SupportException(
      fmt::format("Element {} of the block: the constant {} is not finite.", element, function.constant),
      adderLocation());
}

}  // namespace

void requireLinear(const tav::math::Symbol<double>& symbol, int element, const Data& data) {
  if (!symbol.is(tav::math::SymbolKind::kLinear) || symbol.asLinear().space != data.variableSpace()) {
    throw SupportException("Input not supported", adderLocation());
  }
  const auto& function = symbol.asLinear();
  const int variables = data.variables.count();
  if (!areTermsSound(function, variables)) refuse(function, element, variables);
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

void requireAllLinear(const SymbolContainer& functions, int count, const Data& data) {
  if (functions.size() != count) throw SupportException("Input not supported", adderLocation());
  forEachFunction(functions, count, [&](int i, const auto& symbol) { requireLinear(symbol, i, data); });
}

}  // namespace grb
