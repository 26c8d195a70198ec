#include "tav/math/evaluator.h"

#include <limits>
#include <numeric>

#include "tav/math/fn/catalogue.h"

namespace tav::math {

namespace {

double at(std::span<const double> point, int position) {
  // A negative position becomes a large one.
  if (static_cast<std::size_t>(position) >= point.size()) {
    throw CheckException::failedLessThan("position", position, {"point.size()", point.size()});
  }
  return point[static_cast<std::size_t>(position)];
}

// Whether the element is the one argument of a function of vectors, such as a norm: a linear function that stands there
// is the vector of its terms. Its call comes next.
bool isVectorInput(const ExpressionView<double>& expression, std::size_t position) {
  if (position + 1 >= expression.count()) return false;
  const Symbol<double> next = expression.at(position + 1);
  return next.is(SymbolKind::kCall) && next.asCall().argumentCount == 1 && next.asCall().function->hasVectorInput();
}

}  // namespace

double evaluate(const LinearFunction<double>& function, std::span<const double> point) {
  double sum = function.constant;
  for (std::size_t k = 0; k < function.positions.size(); ++k) {
    sum += function.coefficients[k] * at(point, function.positions[k]);
  }
  return sum;
}

double Evaluator::operator()(const ExpressionView<double>& expression, std::span<const double> point) {
  values_.clear();
  widths_.clear();
  for (std::size_t i = 0; i < expression.count(); ++i) {
    const Symbol<double> symbol = expression.at(i);
    switch (symbol.kind()) {
      case SymbolKind::kVariable:
        push(at(point, symbol.asVariable().position));
        break;
      case SymbolKind::kConstant:
        push(symbol.asConstant());
        break;
      case SymbolKind::kVector:
        pushVector(symbol.asVector()->values());
        break;
      case SymbolKind::kLinear:
        pushLinear(symbol.asLinear(), point, isVectorInput(expression, i));
        break;
      default:
        call(symbol.asCall());
    }
  }
  // A vector is not a number.
  return values_.size() == 1 ? values_.back() : std::numeric_limits<double>::quiet_NaN();
}

void Evaluator::push(double value) {
  values_.push_back(value);
  widths_.push_back(1);
}

void Evaluator::pushVector(std::span<const double> values) {
  values_.insert(values_.end(), values.begin(), values.end());
  widths_.push_back(values.size());
}

void Evaluator::pushLinear(const LinearFunction<double>& function, std::span<const double> point, bool asVector) {
  if (!asVector) return push(evaluate(function, point));
  for (std::size_t k = 0; k < function.positions.size(); ++k) {
    values_.push_back(function.coefficients[k] * at(point, function.positions[k]));
  }
  widths_.push_back(function.positions.size());
}

void Evaluator::call(const Call<double>& call) {
  const auto first = widths_.end() - call.argumentCount;
  const std::size_t width = std::accumulate(first, widths_.end(), std::size_t{0});
  widths_.erase(first, widths_.end());
  if (call.function == &fn::the<fn::Vectorize>()) {
    widths_.push_back(width);
    return;
  }
  const auto operands = std::span<const double>(values_).last(width);
  const double value = call.function->value(operands);
  values_.resize(values_.size() - width);
  push(value);
}

}  // namespace tav::math
