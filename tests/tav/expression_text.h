#pragma once

#include <fmt/format.h>

#include <string>
#include <string_view>

#include "tav/math/expression.h"

/// An expression of variables, constants and calls, as a walk from its root sees it: "Subtract(x3, Add(x0, 2))".
inline std::string textOf(const tav::math::ExpressionView<double>& view) {
  using Kind = tav::math::SymbolKind;
  const auto root = view.root();
  if (root.is(Kind::kVariable)) return fmt::format("x{}", root.asVariable().position);
  if (root.is(Kind::kConstant)) return fmt::format("{}", root.asConstant());
  std::string arguments;
  view.forEachArgumentFromLast(
      [&](const auto& argument) { arguments.insert(0, textOf(argument) + (arguments.empty() ? "" : ", ")); });
  const std::string_view name = root.asCall().function->identifier();
  return fmt::format("{}({})", name.substr(name.rfind(':') + 1), arguments);
}
