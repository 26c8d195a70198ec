#pragma once

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <cmath>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tav/math/expression.h"
#include "tav/math/fn/abstract.h"

/// Adds a term to the text of a sum: "2 x0", then " - x1".
inline void addTerm(std::string& sum, double coefficient, const std::string& factor) {
  if (coefficient < 0) sum += sum.empty() ? "-" : " - ";
  if (coefficient >= 0 && !sum.empty()) sum += " + ";
  sum += std::fabs(coefficient) == 1 ? factor : fmt::format("{:.6g} {}", std::fabs(coefficient), factor);
}

inline std::string sumText(std::span<const int> columns, std::span<const double> coefficients) {
  std::string text;
  for (std::size_t k = 0; k < columns.size(); ++k) addTerm(text, coefficients[k], fmt::format("x{}", columns[k]));
  return text;
}

/// An expression as a walk from its root sees it: "Subtract(x3, Add(x0, 2))"; linear functions are sums of terms.
inline std::string expressionText(const tav::math::ExpressionView<double>& view) {
  using Kind = tav::math::SymbolKind;
  const auto root = view.root();
  if (root.is(Kind::kVariable)) return fmt::format("x{}", root.asVariable().position);
  if (root.is(Kind::kConstant)) return fmt::format("{:.6g}", root.asConstant());
  if (root.is(Kind::kLinear)) return sumText(root.asLinear().positions, root.asLinear().coefficients);
  if (root.is(Kind::kVector)) return "[]";
  std::vector<std::string> arguments;
  view.forEachArgumentFromLast([&](const auto& part) { arguments.insert(arguments.begin(), expressionText(part)); });
  const std::string_view identifier = root.asCall().function->identifier();
  const std::string_view name = identifier.substr(identifier.rfind(':') + 1);
  if (name != "linear") return fmt::format("{}({})", name, fmt::join(arguments, ", "));
  if (arguments[2] == "0") return arguments[0];
  return arguments[0].empty() ? arguments[2] : fmt::format("{} + {}", arguments[0], arguments[2]);
}
