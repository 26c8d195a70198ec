#include "grb/nonlinear/counted_adds.h"

#include <cmath>

#include "grb/gurobi/constants.h"
#include "grb/nonlinear/nonlinear_stack.h"

namespace grb {
namespace {

constexpr double kNeverRelaxed = 0;  // as a preference: what is ours does not give way in place of what is the user's

}  // namespace

bool isUsable(const tav::math::LinearFunction<double>& function, int variables) {
  return std::isfinite(function.constant) && areFinite(function.coefficients) &&
         arePositions(function.positions, variables);
}

int addCountedRow(Data& data, const LinearTerms& terms, char sense, const char* name) {
  const double side = 0.0 - terms.constant;  // not -0
  data.model->addConstr(terms.positions, terms.coefficients, sense, side, name);
  const int position = data.registerRow(sense, side);
  data.rowStores->preference.set(position, kNeverRelaxed);
  return position;
}

int addFreeVariable(Data& data, const std::optional<RowEntry>& entry, double objective) {
  const std::size_t entries = entry ? 1 : 0;
  const RowEntry given = entry.value_or(RowEntry{});
  data.model->addVar({&given.row, entries}, {&given.coefficient, entries}, objective, -kInfinity, kInfinity,
                     vartype::kContinuous, nullptr);
  const int position = data.variables.add();
  data.variableStores.preference.set(position, kNeverRelaxed);
  return position;
}

void addTree(Data& data, const NonlinearStack& tree, const GeneralConstraint& what, int result, const char* name) {
  data.model->addGenConstrNL(name, result, tree.opcodes(), tree.data(), tree.parents());
  data.generalConstraints.push_back(what);
}

}  // namespace grb
