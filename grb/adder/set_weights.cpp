#include "grb/adder/set_weights.h"

#include <fmt/core.h>

#include "grb/adder/adder.h"
#include "grb/gurobi/constants.h"

namespace grb {
namespace {

using tav::math::SymbolKind;
using Symbol = tav::math::Symbol<double>;

// The weights that a set lists; none for a constant.
std::span<const double> listOf(const Symbol& given) {
  if (!given.is(SymbolKind::kVector) || !given.asVector()) return {};
  return given.asVector()->values();
}

void requireSoundList(std::span<const double> weights, const LinearTerms& members, int set) {
  if (weights.size() != members.positions.size()) {
    failElement(set, fmt::format("the set has {} members and {} weights", members.positions.size(), weights.size()));
  }
}

}  // namespace

SetWeights::SetWeights(const tav::attr::BaseContainer& given, const LinearFunctions& members,
                       std::span<const int> types) {
  if (given.size() == 0) return;
  const auto symbols = given.as<Symbol>();
  requireSupported(symbols.size() == static_cast<int>(types.size()));
  ends_.reserve(types.size());
  std::vector<double> sorted;
  members.forEach([&](int set, const LinearTerms& terms) {
    const Symbol symbol = symbols.get(set);
    requireSupported(symbol.is(SymbolKind::kVector) || symbol.is(SymbolKind::kConstant));
    const auto list = listOf(symbol);
    if (symbol.is(SymbolKind::kConstant)) values_.insert(values_.end(), terms.positions.size(), symbol.asConstant());
    if (!list.empty()) requireSoundList(list, terms, set);
    values_.insert(values_.end(), list.begin(), list.end());
    ends_.push_back(values_.size());
    if (!areFinite(of(set))) failElement(set, "a weight is not finite");
    const bool orderCounts = types[static_cast<std::size_t>(set)] == sos::kType2;
    if (const double* twice = orderCounts ? repeatedValue(list, sorted) : nullptr) {
      failElement(set, fmt::format("two members have the weight {}, which leaves the order of the set open", *twice));
    }
  });
}

std::span<const double> SetWeights::of(int set) const {
  if (ends_.empty()) return {};
  const auto i = static_cast<std::size_t>(set);
  const std::size_t first = i == 0 ? 0 : ends_[i - 1];
  return std::span(values_).subspan(first, ends_[i] - first);
}

}  // namespace grb
