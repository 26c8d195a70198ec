#include "grb/nonlinear/split.h"

#include <cmath>

#include "grb/nonlinear/counted_adds.h"
#include "grb/nonlinear/refusal.h"

namespace grb {
namespace {

using tav::math::ExpressionView;
using tav::math::LinearFunction;
using tav::math::Symbol;
using tav::math::SymbolKind;
using tav::opt::SupportException;

// Appends factor * function.
void append(SplitFunction& split, double factor, const LinearFunction<double>& function) {
  split.positions.insert(split.positions.end(), function.positions.begin(), function.positions.end());
  for (const double coefficient : function.coefficients) split.coefficients.push_back(factor * coefficient);
  split.constant += factor * function.constant;
}

bool areFinite(double factor, const LinearFunction<double>& function) {
  for (const double coefficient : function.coefficients) {
    if (!std::isfinite(factor * coefficient)) return false;
  }
  return std::isfinite(factor * function.constant);
}

class Splitter {
 public:
  Splitter(SplitFunction& result, const Data& data)
      : result_(result), space_(data.variableSpace()), variables_(data.variables.count()) {}

  void takeWhole(const LinearFunction<double>& function) {
    if (function.space != space_) throw SupportException("Input not supported", nonlinearLocation());
    if (!isUsable(function, variables_)) {
      throw SupportException("A linear function has a variable that does not exist or a number that is not finite.",
                             nonlinearLocation());
    }
    append(result_, 1, function);
  }

  void takeExpression(const ExpressionView<double>& expression) {
    bool hasLinear = false;
    Summands summands(expression);
    while (const auto summand = summands.next()) {
      if (takeLinear(*summand)) {
        hasLinear = true;
      } else {
        result_.remainder.push_back(*summand);
      }
    }
    if (!hasLinear) result_.remainder = {{expression}};
  }

 private:
  bool takeLinear(const Summand& summand) {
    const auto [size, view] = multipleOf(summand.view);
    const double factor = summand.isNegated ? -size : size;
    if (const auto function = linearCall(view)) {
      if (function->space != space_ || !isUsable(*function, variables_) || !areFinite(factor, *function)) return false;
      append(result_, factor, *function);
      return true;
    }
    if (view.count() != 1 || !std::isfinite(factor)) return false;
    const Symbol<double> leaf = view.root();
    if (leaf.is(SymbolKind::kConstant)) return takeConstant(factor * leaf.asConstant());
    return leaf.is(SymbolKind::kVariable) && takeVariable(factor, leaf.asVariable());
  }

  bool takeConstant(double value) {
    if (!std::isfinite(value)) return false;
    result_.constant += value;
    return true;
  }

  bool takeVariable(double factor, const tav::math::Variable& variable) {
    if (variable.space != space_ || variable.position < 0 || variable.position >= variables_) return false;
    result_.positions.push_back(variable.position);
    result_.coefficients.push_back(factor);
    return true;
  }

  SplitFunction& result_;
  std::uint64_t space_;
  int variables_;
};

}  // namespace

SplitFunction split(const Symbol<double>& function, const Data& data) {
  SplitFunction result;
  Splitter splitter(result, data);
  switch (function.kind()) {
    case SymbolKind::kLinear:
      splitter.takeWhole(function.asLinear());
      break;
    case SymbolKind::kVariable: {
      const double one = 1;
      splitter.takeWhole({function.asVariable().space, {&function.asVariable().position, 1}, {&one, 1}, 0, nullptr});
      break;
    }
    case SymbolKind::kConstant:
      splitter.takeWhole({data.variableSpace(), {}, {}, function.asConstant(), nullptr});
      break;
    case SymbolKind::kExpression:
    case SymbolKind::kExpressionView:
      splitter.takeExpression(function.asExpression());
      break;
    default:
      throw SupportException("Input not supported", nonlinearLocation());
  }
  if (!std::isfinite(result.constant)) {
    throw SupportException("The constants of a function add up to what is not finite.", nonlinearLocation());
  }
  return result;
}

}  // namespace grb
