#include "tests/brel/beyond_text.h"

#include <fmt/format.h>

#include "tests/tav/expression_text.h"

namespace brel_test {
namespace {

using namespace brel::rewrite;

std::string linear(const LinearTerms& terms, std::size_t i) {
  const std::size_t first = terms.start[i], count = terms.start[i + 1] - first;
  return sumText({terms.column.data() + first, count}, {terms.value.data() + first, count});
}

std::string quadratic(const LinearTerms& terms, const QuadraticTerms& products, std::size_t i) {
  std::string text = linear(terms, i);
  for (std::size_t k = products.start[i]; k < products.start[i + 1]; ++k) {
    addTerm(text, products.value[k], fmt::format("x{}*x{}", products.first[k], products.second[k]));
  }
  return text;
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
    text += expressionText(beyond.nonlinear.functions[i]) + side(beyond.nonlinear.heads, i);
  }
  const BeyondObjective& objective = beyond.objective;
  using Kind = BeyondObjective::Kind;
  if (objective.kind == Kind::nonlinear) return text + "objective: " + expressionText(objective.function[0]) + "\n";
  if (objective.kind == Kind::asTheUsers) return text;
  return text + fmt::format("objective: {} + {:.6g}\n", quadratic(objective.terms, objective.quadratic, 0),
                            objective.constant);
}

}  // namespace brel_test
