#include "tests/brel/beyond_text.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <vector>

#include "tav/math/fn/abstract.h"

namespace brel_test {
namespace {

using namespace brel::rewrite;

std::string term(double coefficient, const std::string& factor, bool isFirst) {
  const double size = coefficient < 0 ? -coefficient : coefficient;
  const char* sign = coefficient < 0 ? (isFirst ? "-" : " - ") : (isFirst ? "" : " + ");
  return size == 1 ? sign + factor : fmt::format("{}{:.6g} {}", sign, size, factor);
}

std::string linear(std::span<const int> columns, std::span<const double> values) {
  std::string text;
  for (std::size_t k = 0; k < columns.size(); ++k) text += term(values[k], fmt::format("x{}", columns[k]), k == 0);
  return text;
}

std::string linear(const LinearTerms& terms, std::size_t i) {
  const std::size_t first = terms.start[i], count = terms.start[i + 1] - first;
  return linear({terms.column.data() + first, count}, {terms.value.data() + first, count});
}

std::string quadratic(const LinearTerms& terms, const QuadraticTerms& products, std::size_t i) {
  std::string text = linear(terms, i);
  for (std::size_t k = products.start[i]; k < products.start[i + 1]; ++k) {
    text += term(products.value[k], fmt::format("x{}*x{}", products.first[k], products.second[k]), text.empty());
  }
  return text;
}

// In the manner of calls: "Add(x0 + 1, Sin(x1))".
std::string expression(const tav::math::ExpressionView<double>& view) {
  using Kind = tav::math::SymbolKind;
  std::vector<std::string> stack;
  for (std::size_t i = 0; i < view.count(); ++i) {
    const auto symbol = view.at(i);
    if (symbol.is(Kind::kVariable)) {
      stack.push_back(fmt::format("x{}", symbol.asVariable().position));
    } else if (symbol.is(Kind::kConstant)) {
      stack.push_back(fmt::format("{:.6g}", symbol.asConstant()));
    } else if (symbol.is(Kind::kLinear)) {
      stack.push_back(linear(symbol.asLinear().positions, symbol.asLinear().coefficients));
    } else if (symbol.is(Kind::kVector)) {
      stack.emplace_back("-");
    } else {
      const auto call = symbol.asCall();
      const std::vector<std::string> arguments(stack.end() - call.argumentCount, stack.end());
      stack.resize(stack.size() - arguments.size());
      const std::string name(call.function->identifier().substr(call.function->identifier().rfind(':') + 1));
      const bool hasConstant = name == "linear" && arguments.back() != "0";
      stack.push_back(name == "linear" ? arguments[0] + (hasConstant ? " + " + arguments.back() : "")
                                       : fmt::format("{}({})", name, fmt::join(arguments, ", ")));
    }
  }
  return stack.back();
}

std::string side(const RowHeads& heads, std::size_t i) {
  constexpr const char* kSenses[] = {">=", "<=", "="};
  const std::string user = heads.user[i] < 0 ? "" : fmt::format("  (row {})", heads.user[i]);
  return fmt::format(" {} {:.6g}{}\n", kSenses[static_cast<int>(heads.type[i])], heads.side[i], user);
}

}  // namespace

std::string textOf(const Beyond& beyond, int firstColumn) {
  std::string text;
  const AuxiliaryColumns& columns = beyond.columns;
  for (std::size_t j = 0; j < columns.size(); ++j) {
    text += fmt::format("x{} in [{:.6g}, {:.6g}]{}\n", firstColumn + static_cast<int>(j), columns.lower[j],
                        columns.upper[j], columns.isInteger[j] ? " whole" : "");
  }
  for (std::size_t i = 0; i < beyond.linear.heads.size(); ++i) {
    text += linear(beyond.linear.terms, i) + side(beyond.linear.heads, i);
  }
  for (std::size_t i = 0; i < beyond.quadratic.heads.size(); ++i) {
    text += quadratic(beyond.quadratic.terms, beyond.quadratic.quadratic, i) + side(beyond.quadratic.heads, i);
  }
  for (std::size_t i = 0; i < beyond.sets.type.size(); ++i) {
    text += fmt::format("SOS{}: {}\n", beyond.sets.type[i], linear(beyond.sets.members, i));
  }
  for (std::size_t i = 0; i < beyond.indicator.heads.size(); ++i) {
    text += fmt::format("x{} = {}: ", beyond.indicator.binary[i], beyond.indicator.active[i]) +
            linear(beyond.indicator.terms, i) + side(beyond.indicator.heads, i);
  }
  for (std::size_t i = 0; i < beyond.nonlinear.heads.size(); ++i) {
    text += expression(beyond.nonlinear.functions[i]) + side(beyond.nonlinear.heads, i);
  }
  const BeyondObjective& objective = beyond.objective;
  using Kind = BeyondObjective::Kind;
  if (objective.kind == Kind::nonlinear) return text + "objective: " + expression(objective.function[0]) + "\n";
  if (objective.kind == Kind::asTheUsers) return text;
  return text + fmt::format("objective: {} + {:.6g}\n", quadratic(objective.terms, objective.quadratic, 0),
                            objective.constant);
}

}  // namespace brel_test
