#include "grb/nonlinear/summands.h"

#include "tav/math/fn/catalogue.h"

namespace grb {
namespace {

namespace fn = tav::math::fn;
using tav::math::ExpressionView;
using tav::math::LinearFunction;
using tav::math::Symbol;
using tav::math::SymbolKind;

// Every summand is asked, so the one instance is asked for and not its name. Another function of the same name would
// only be left as it is.
template <class F>
bool calls(const Symbol<double>& symbol) {
  return symbol.is(SymbolKind::kCall) && symbol.asCall().function == &fn::the<F>();
}

std::optional<double> constantIn(const ExpressionView<double>& expression) {
  if (expression.count() != 1 || !expression.root().is(SymbolKind::kConstant)) return std::nullopt;
  return expression.root().asConstant();
}

struct Operands {
  ExpressionView<double> first, second;
};

Operands operandsOf(const ExpressionView<double>& call) {
  std::optional<ExpressionView<double>> first, second;
  call.forEachArgumentFromLast([&](const ExpressionView<double>& operand) { (second ? first : second) = operand; });
  return {*first, *second};
}

}  // namespace

std::optional<Summand> Summands::next() {
  while (!open_.empty()) {
    const Summand summand = open_.back();
    open_.pop_back();
    const Symbol<double> root = summand.view.root();
    const bool isDifference = calls<fn::Subtract>(root);
    const bool isNegation = calls<fn::Negate>(root);
    if (!isDifference && !isNegation && !calls<fn::Add>(root)) return summand;
    bool isLast = true;
    summand.view.forEachArgumentFromLast([&](const ExpressionView<double>& operand) {
      const bool changesSign = isNegation || (isDifference && isLast);
      open_.push_back({operand, summand.isNegated != changesSign});
      isLast = false;
    });
  }
  return std::nullopt;
}

Multiple multipleOf(const ExpressionView<double>& expression) {
  const Symbol<double> root = expression.root();
  const bool isQuotient = calls<fn::Divide>(root);
  if (!isQuotient && !calls<fn::Multiply>(root)) return {1, expression};
  const auto [first, second] = operandsOf(expression);
  const auto right = constantIn(second);
  if (isQuotient) return right && *right != 0 ? Multiple{1 / *right, first} : Multiple{1, expression};
  if (right) return {*right, first};
  const auto left = constantIn(first);
  return left ? Multiple{*left, second} : Multiple{1, expression};
}

std::optional<LinearFunction<double>> linearCall(const ExpressionView<double>& expression) {
  constexpr std::size_t kElements = 4;  // function, vector, constant, call
  if (expression.count() != kElements || expression.argumentCount() != 3) return std::nullopt;
  if (expression.root().asCall().function->identifier() != fn::the<fn::Linear>().identifier()) return std::nullopt;
  const Symbol<double> function = expression.at(0);
  const Symbol<double> vector = expression.at(1);
  const Symbol<double> constant = expression.at(2);
  if (!function.is(SymbolKind::kLinear) || !constant.is(SymbolKind::kConstant)) return std::nullopt;
  if (!vector.is(SymbolKind::kVector) || vector.asVector()->size() > 0) return std::nullopt;
  LinearFunction<double> result = function.asLinear();
  result.constant += constant.asConstant();
  return result;
}

}  // namespace grb
