#include "tav/math/fn/catalogue.h"

#include <array>
#include <unordered_map>

namespace tav::math::fn {

namespace {

template <class... F>
std::array<const Abstract<double>*, sizeof...(F)> instances() {
  return {&the<F>()...};
}

}  // namespace

std::span<const Abstract<double>* const> catalogue() {
  static const auto kAll = instances<Add, Subtract, Multiply, Divide, Negate, Abs, Min, Max, Square, SquareRoot, Power,
                                     Power0, PowerConst, SignPower, Exp, Log, Log2, Log10, LogBase, Sigmoid, Polynomial,
                                     Sin, Cos, Tan, TanH, Norm1, Norm2, NormInf, BoolAnd, BoolOr, Vectorize, Linear>();
  return kAll;
}

const Abstract<double>* find(std::string_view identifier) {
  static const auto kIndex = [] {
    std::unordered_map<std::string_view, const Abstract<double>*> index;
    for (const auto* function : catalogue()) index.emplace(function->identifier(), function);
    return index;
  }();
  const auto found = kIndex.find(identifier);
  return found == kIndex.end() ? nullptr : found->second;
}

}  // namespace tav::math::fn
