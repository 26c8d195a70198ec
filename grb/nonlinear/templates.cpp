#include "grb/nonlinear/templates.h"

#include <array>
#include <cmath>
#include <utility>

#include "grb/nonlinear/summands.h"
#include "tav/math/fn/catalogue.h"

namespace grb {
namespace {

namespace fn = tav::math::fn;
using tav::math::ExpressionView;
using tav::math::LinearFunction;
using tav::math::Symbol;
using tav::math::SymbolKind;
using Symbols = std::vector<Symbol<double>>;

struct Catalogue {
  std::array<Template, 7> family1;
  std::array<Template, 3> family2;
  std::array<Template, 6> family3;
  std::array<Template, 1> family4;
  std::array<Template, 4> family5;
};

template <class F>
Template templateOf(std::string_view id, int kind, Pattern pattern = Pattern::symbols) {
  return {id, kind, fn::the<F>().identifier(), pattern};
}

const Catalogue& catalogue() {
  static const Catalogue kCatalogue{
      {templateOf<fn::Abs>("grb:gen_constr1:abs", 0), templateOf<fn::Log>("grb:gen_constr1:log", 1),
       templateOf<fn::Exp>("grb:gen_constr1:exp", 2), templateOf<fn::Sin>("grb:gen_constr1:sin", 3),
       templateOf<fn::Cos>("grb:gen_constr1:cos", 4), templateOf<fn::Tan>("grb:gen_constr1:tan", 5),
       templateOf<fn::Sigmoid>("grb:gen_constr1:sigmoid", 6)},
      {templateOf<fn::Norm1>("grb:gen_constr2:norm1", 0, Pattern::vector),
       templateOf<fn::Norm2>("grb:gen_constr2:norm2", 1, Pattern::vector),
       templateOf<fn::NormInf>("grb:gen_constr2:norm_inf", 2, Pattern::vector)},
      {templateOf<fn::LogBase>("grb:gen_constr3:log_a", 0),
       templateOf<fn::Power>("grb:gen_constr3:exp_a", 1, Pattern::constantFirst),
       templateOf<fn::Power0>("grb:gen_constr3:exp_a", 1, Pattern::constantFirst),
       templateOf<fn::Power>("grb:gen_constr3:pow", 2), templateOf<fn::Power0>("grb:gen_constr3:pow", 2),
       templateOf<fn::PowerConst>("grb:gen_constr3:pow", 2)},
      {templateOf<fn::Polynomial>("grb:gen_constr4:poly", 0, Pattern::withCoefficients)},
      {templateOf<fn::Min>("grb:gen_constr5:min", 0), templateOf<fn::Max>("grb:gen_constr5:max", 1),
       templateOf<fn::BoolAnd>("grb:gen_constr5:and", 2), templateOf<fn::BoolOr>("grb:gen_constr5:or", 3)},
  };
  return kCatalogue;
}

// A plain symbol: one that stands alone, or a linear function that is one variable.
std::optional<Symbol<double>> plain(const ExpressionView<double>& expression) {
  if (expression.count() == 1) return expression.root();
  const auto function = linearCall(expression);
  if (!function || function->termCount() != 1 || function->coefficients[0] != 1 || function->constant != 0) return {};
  return Symbol<double>::ofVariable(function->space, function->positions[0]);
}

// y as sign * a variable.
struct SignedVariable {
  double sign;
  Symbol<double> variable;
};

std::optional<SignedVariable> signedVariable(const ExpressionView<double>& view, double factor) {
  if (view.count() == 1 && view.root().is(SymbolKind::kVariable)) return SignedVariable{factor, view.root()};
  const auto function = linearCall(view);
  if (!function || function->termCount() != 1 || function->constant != 0) return {};
  return SignedVariable{factor * function->coefficients[0],
                        Symbol<double>::ofVariable(function->space, function->positions[0])};
}

// y - f(...) = 0.
struct Definition {
  Symbol<double> result;
  ExpressionView<double> call;
};

std::optional<Definition> definitionIn(const ExpressionView<double>& expression) {
  std::optional<SignedVariable> result;
  std::optional<Multiple> call;
  Summands summands(expression);
  while (const auto summand = summands.next()) {
    const auto [size, view] = multipleOf(summand->view);
    const double factor = summand->isNegated ? -size : size;
    if (view.count() == 1 && view.root().is(SymbolKind::kConstant)) {
      if (factor * view.root().asConstant() != 0) return {};
    } else if (const auto variable = signedVariable(view, factor)) {
      if (std::exchange(result, variable)) return {};
    } else {
      if (call || !view.root().is(SymbolKind::kCall)) return {};
      call.emplace(factor, view);
    }
  }
  if (!result || !call || std::fabs(result->sign) != 1 || call->factor != -result->sign) return {};
  return Definition{result->variable, call->view};
}

// The arguments of a call as plain symbols, nothing when one of them is calculated.
std::optional<Symbols> plainArguments(const ExpressionView<double>& call) {
  Symbols arguments(static_cast<std::size_t>(call.argumentCount()));
  auto next = arguments.rbegin();
  bool arePlain = true;
  call.forEachArgumentFromLast([&](const ExpressionView<double>& argument) {
    const auto symbol = plain(argument);
    arePlain = arePlain && symbol;
    if (arePlain) *next++ = *symbol;
  });
  return arePlain ? std::optional(std::move(arguments)) : std::nullopt;
}

// The operands of a call of Vectorize, or the symbol itself; nothing when there is anything else.
std::optional<Symbols> elementsOf(const ExpressionView<double>& vector) {
  if (vector.count() == 1) return Symbols{vector.root()};
  if (vector.root().asCall().function != &fn::the<fn::Vectorize>()) return {};
  return plainArguments(vector);
}

// Elements that are not variables of one space give a function of no space at all.
std::optional<Symbol<double>> variablesAsFunction(const ExpressionView<double>& vector) {
  const auto elements = elementsOf(vector);
  if (!elements) return {};
  if (elements->size() == 1 && !elements->front().is(SymbolKind::kVariable)) return elements->front();
  std::vector<int> positions;
  unsigned long long space = 0;
  bool isSound = true;
  for (const Symbol<double>& element : *elements) {
    isSound = isSound && element.is(SymbolKind::kVariable);
    if (!isSound) break;
    const tav::math::Variable& variable = element.asVariable();
    isSound = positions.empty() || variable.space == space;
    space = variable.space;
    positions.push_back(variable.position);
  }
  std::vector<double> ones(positions.size(), 1.0);
  return Symbol<double>::ofLinear(
      LinearFunction<double>::owning(isSound ? space : 0, std::move(positions), std::move(ones), 0));
}

// Coefficients come as a vector or as constants side by side.
std::optional<Symbol<double>> coefficientsIn(const ExpressionView<double>& vector) {
  const auto elements = elementsOf(vector);
  if (!elements || elements->front().is(SymbolKind::kVector)) {
    return elements ? std::optional(elements->front()) : std::nullopt;
  }
  std::vector<double> values;
  for (const Symbol<double>& element : *elements) {
    if (!element.is(SymbolKind::kConstant)) return element;
    values.push_back(element.asConstant());
  }
  return Symbol<double>::ofVector(std::make_shared<const tav::math::Vector<double>>(std::move(values)));
}

std::optional<Symbols> polynomialArguments(const ExpressionView<double>& call) {
  std::vector<ExpressionView<double>> fromLast;
  call.forEachArgumentFromLast([&](const ExpressionView<double>& argument) { fromLast.push_back(argument); });
  const auto argument = plain(fromLast[1]);
  const auto coefficients = coefficientsIn(fromLast[0]);
  if (!argument || !coefficients) return {};
  return Symbols{*argument, *coefficients};
}

std::optional<Symbols> capture(Pattern pattern, const ExpressionView<double>& call) {
  switch (pattern) {
    case Pattern::symbols:
      return plainArguments(call);
    case Pattern::vector: {
      std::optional<Symbol<double>> vector;
      call.forEachArgumentFromLast([&](const auto& argument) { vector = variablesAsFunction(argument); });
      return vector ? std::optional(Symbols{*vector}) : std::nullopt;
    }
    case Pattern::constantFirst: {
      auto arguments = plainArguments(call);
      if (!arguments || !arguments->front().is(SymbolKind::kConstant)) return {};
      std::swap(arguments->front(), arguments->back());
      return arguments;
    }
    case Pattern::withCoefficients:
      return polynomialArguments(call);
  }
  return {};
}

}  // namespace

std::span<const Template> templatesOf(int family) {
  const Catalogue& all = catalogue();
  switch (family) {
    case 1:
      return all.family1;
    case 2:
      return all.family2;
    case 3:
      return all.family3;
    case 4:
      return all.family4;
    case 5:
      return all.family5;
    default:
      return {};
  }
}

std::optional<Match> match(std::span<const Template> templates, const Symbol<double>& expr) {
  if (!expr.isExpression()) return {};
  const auto definition = definitionIn(expr.asExpression());
  if (!definition) return {};
  const std::string_view function = definition->call.root().asCall().function->identifier();
  for (const Template& candidate : templates) {
    if (candidate.function != function) continue;
    if (auto arguments = capture(candidate.pattern, definition->call)) {
      return Match{candidate.kind, definition->result, *std::move(arguments)};
    }
  }
  return {};
}

}  // namespace grb
