#include "grb/nonlinear/gen_constr.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "grb/gurobi/constants.h"
#include "grb/nonlinear/refusal.h"
#include "grb/nonlinear/templates.h"

namespace grb {
namespace {

using tav::math::Symbol;
using tav::math::SymbolKind;
using Location = std::source_location;

constexpr int kEquality = 2;
constexpr const char* kNoOptions = "";

[[noreturn]] void refuse(const char* message, const Location& at) {
  throw tav::opt::SupportException(message, nonlinearLocation(at));
}

int variable(const GenConstrTarget& target, const Symbol<double>& symbol, const Location& at = Location::current()) {
  const bool isOurs = symbol.is(SymbolKind::kVariable) && symbol.asVariable().space == target.space;
  if (!isOurs) refuse("Input not supported", at);
  return symbol.asVariable().position;
}

std::vector<int> variables(const GenConstrTarget& target, std::span<const Symbol<double>> symbols,
                           const Location& at = Location::current()) {
  std::vector<int> positions;
  positions.reserve(symbols.size());
  for (const Symbol<double>& symbol : symbols) positions.push_back(variable(target, symbol, at));
  if (positions.empty()) refuse("Input not supported", at);
  return positions;
}

std::span<const int> elements(const GenConstrTarget& target, const Symbol<double>& vector,
                              const Location& at = Location::current()) {
  const auto isOne = [](double coefficient) { return coefficient == 1; };
  const bool isVector =
      vector.is(SymbolKind::kLinear) && vector.asLinear().space == target.space && vector.asLinear().termCount() > 0 &&
      vector.asLinear().constant == 0 &&
      std::all_of(vector.asLinear().coefficients.begin(), vector.asLinear().coefficients.end(), isOne);
  if (!isVector) refuse("Input not supported", at);
  return vector.asLinear().positions;
}

double constant(const Symbol<double>& symbol, const Location& at = Location::current()) {
  if (!symbol.is(SymbolKind::kConstant) || !std::isfinite(symbol.asConstant())) refuse("Parameter not supported", at);
  return symbol.asConstant();
}

void requireEquality(const GenConstrTarget& target, const Location& at = Location::current()) {
  if (target.domainType != kEquality) refuse("Domain type not supported.", at);
}

template <class T, std::size_t kSize>
const T& ofKind(const T (&table)[kSize], int kind, const Location& at = Location::current()) {
  if (kind < 0 || kind >= static_cast<int>(kSize)) refuse("Constraint not supported", at);
  return table[kind];
}

}  // namespace

void addGenConstr1(const GenConstrTarget& target, int kind, const Symbol<double>& result,
                   const Symbol<double>& argument) {
  const int y = variable(target, result);
  const int x = variable(target, argument);
  requireEquality(target);
  using Add = void (GurobiModel::*)(const char*, int, int, const char*);
  static constexpr Add kFunctions[]{nullptr,
                                    &GurobiModel::addGenConstrLog,
                                    &GurobiModel::addGenConstrExp,
                                    &GurobiModel::addGenConstrSin,
                                    &GurobiModel::addGenConstrCos,
                                    &GurobiModel::addGenConstrTan,
                                    &GurobiModel::addGenConstrLogistic};
  const Add add = ofKind(kFunctions, kind);
  if (add == nullptr) return target.model->addGenConstrAbs(target.name, y, x);
  (target.model->*add)(target.name, x, y, kNoOptions);
}

void addGenConstr2(const GenConstrTarget& target, int kind, const Symbol<double>& result,
                   const Symbol<double>& vector) {
  const int y = variable(target, result);
  const auto members = elements(target, vector);
  requireEquality(target);
  static constexpr double kWhich[]{1, 2, kInfinity};
  target.model->addGenConstrNorm(target.name, y, members, ofKind(kWhich, kind));
}

void addGenConstr3(const GenConstrTarget& target, int kind, const Symbol<double>& result,
                   const Symbol<double>& argument, const Symbol<double>& parameter) {
  const int y = variable(target, result);
  const int x = variable(target, argument);
  const double a = constant(parameter);
  constexpr int kLogarithm = 0;
  constexpr int kPower = 2;
  const bool isBad = kind != kPower && (a <= 0 || (kind == kLogarithm && a == 1));
  if (isBad) refuse("Parameter not supported", Location::current());
  requireEquality(target);
  using Add = void (GurobiModel::*)(const char*, int, int, double, const char*);
  static constexpr Add kFunctions[]{&GurobiModel::addGenConstrLogA, &GurobiModel::addGenConstrExpA,
                                    &GurobiModel::addGenConstrPow};
  (target.model->*ofKind(kFunctions, kind))(target.name, x, y, a, kNoOptions);
}

void addGenConstr4(const GenConstrTarget& target, int kind, const Symbol<double>& result,
                   const Symbol<double>& argument, const Symbol<double>& coefficients) {
  const int y = variable(target, result);
  const int x = variable(target, argument);
  const auto isFinite = [](double value) { return std::isfinite(value); };
  if (!coefficients.is(SymbolKind::kVector)) refuse("Parameter not supported", Location::current());
  const auto values = coefficients.asVector()->values();
  if (values.empty() || !std::all_of(values.begin(), values.end(), isFinite)) {
    refuse("Parameter not supported", Location::current());
  }
  requireEquality(target);
  if (kind != 0) refuse("Constraint not supported", Location::current());
  target.model->addGenConstrPoly(target.name, x, y, values, kNoOptions);
}

void addGenConstr5(const GenConstrTarget& target, int kind, const Symbol<double>& result,
                   std::span<const Symbol<double>> operands) {
  const int y = variable(target, result);
  const auto members = variables(target, operands);
  requireEquality(target);
  GurobiModel& model = *target.model;
  switch (kind) {  // infinities: no constant among the operands
    case 0:
      return model.addGenConstrMin(target.name, y, members, kInfinity);
    case 1:
      return model.addGenConstrMax(target.name, y, members, -kInfinity);
    case 2:
      return model.addGenConstrAnd(target.name, y, members);
    case 3:
      return model.addGenConstrOr(target.name, y, members);
    default:
      refuse("Constraint not supported", Location::current());
  }
}

bool addGenConstr1(GurobiModel* model, const char* name, unsigned long long space, const Symbol<double>& expr,
                   int domainType) {
  const auto found = match(templatesOf(1), expr);
  if (found) addGenConstr1({model, name, space, domainType}, found->kind, found->result, found->arguments[0]);
  return found.has_value();
}

bool addGenConstr2(GurobiModel* model, const char* name, unsigned long long space, const Symbol<double>& expr,
                   int domainType) {
  const auto found = match(templatesOf(2), expr);
  if (found) addGenConstr2({model, name, space, domainType}, found->kind, found->result, found->arguments[0]);
  return found.has_value();
}

bool addGenConstr3(GurobiModel* model, const char* name, unsigned long long space, const Symbol<double>& expr,
                   int domainType) {
  const auto found = match(templatesOf(3), expr);
  if (!found) return false;
  const GenConstrTarget target{model, name, space, domainType};
  addGenConstr3(target, found->kind, found->result, found->arguments[0], found->arguments[1]);
  return true;
}

bool addGenConstr4(GurobiModel* model, const char* name, unsigned long long space, const Symbol<double>& expr,
                   int domainType) {
  const auto found = match(templatesOf(4), expr);
  if (!found) return false;
  const GenConstrTarget target{model, name, space, domainType};
  addGenConstr4(target, found->kind, found->result, found->arguments[0], found->arguments[1]);
  return true;
}

bool addGenConstr5(GurobiModel* model, const char* name, unsigned long long space, const Symbol<double>& expr,
                   int domainType) {
  const auto found = match(templatesOf(5), expr);
  if (found) addGenConstr5({model, name, space, domainType}, found->kind, found->result, found->arguments);
  return found.has_value();
}

}  // namespace grb
