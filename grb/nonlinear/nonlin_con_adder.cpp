#include "grb/nonlinear/nonlin_con_adder.h"

#include <array>

#include "grb/adder/block_reading.h"
#include "grb/adder/domain_types.h"
#include "grb/nonlinear/counted_adds.h"
#include "grb/nonlinear/gen_constr.h"
#include "grb/nonlinear/nonlinear_stack.h"
#include "grb/nonlinear/refusal.h"
#include "grb/nonlinear/split.h"
#include "tav/opt/quantities.h"
#include "tav/opt/tags.h"

namespace grb {
namespace {

using tav::math::Symbol;
using tav::math::SymbolKind;
using tav::opt::RowQuantity;

struct Row {
  int number;  // in the block
  const Symbol<double>& function;
  int type;
  char sense;
  const char* name;
};

void addGeneral(Data& data, const Row& row) {
  const SplitFunction parts = split(row.function, data);
  NonlinearStack tree = NonlinearStack::encodeSum(parts.remainder, data);
  tree.addAuxiliaries(data);
  const int position = addCountedRow(data, parts.linear(), row.sense, row.name);
  const int result = addFreeVariable(data, RowEntry{position, 1}, 0);
  addTree(data, tree, {GeneralConstraint::Kind::nonlinearRow, data.nonlinearRows.count()}, result, row.name);
  data.nonlinearRows.add();
}

// Gurobi would discard everything queued.
void requireVariables(const Row& row, int variables) {
  if (!row.function.isExpression()) return;
  const auto expression = row.function.asExpression();
  for (std::size_t i = 0; i < expression.count(); ++i) {
    const Symbol<double> symbol = expression.at(i);
    if (symbol.is(SymbolKind::kVariable)) requirePosition(symbol.asVariable().position, row.number, variables);
    if (!symbol.is(SymbolKind::kLinear)) continue;
    for (const int position : symbol.asLinear().positions) requirePosition(position, row.number, variables);
  }
}

void addFunctionConstraint(Data& data, const Row& row) {
  requireVariables(row, data.variables.count());
  using Detect = bool (*)(GurobiModel*, const char*, unsigned long long, const Symbol<double>&, int);
  constexpr std::array<Detect, 5> kFamilies{addGenConstr1, addGenConstr2, addGenConstr3, addGenConstr4, addGenConstr5};
  for (const Detect detect : kFamilies) {
    if (!detect(data.model.get(), row.name, data.variableSpace(), row.function, row.type)) continue;
    data.generalConstraints.push_back({GeneralConstraint::Kind::nonlinearRow, data.nonlinearRows.add()});
    return;
  }
  throw tav::opt::SupportException("Constraint not supported", nonlinearLocation());
}

void tellFallback(const Data& data, const std::exception& error) {
  if (!data.callbacks.log) return;
  data.callbacks.log->writeLine(
      fmt::format("Cannot add General Nonlinear Constraints ({}). Trying to detect Gurobi General Simple and Function "
                  "constraints",
                  error.what()));
}

void addRow(Data& data, const Row& row, bool isTriedAsGeneral) {
  if (isTriedAsGeneral) {
    try {
      return addGeneral(data, row);
    } catch (const GurobiException& error) {
      if (!data.isInStepAfterError()) throw;
      tellFallback(data, error);
    } catch (const std::exception& error) {
      tellFallback(data, error);
    }
  }
  addFunctionConstraint(data, row);
}

}  // namespace

tav::idx::List NonlinConAdder::add(const tav::opt::ConstraintContainer& block) {
  const auto data = openRecord(record());
  const auto standard = block.group(tav::opt::tag::kConstraint);
  const auto own = block.group(kOwnGroup);
  const int count = elementCount(standard);
  if (count <= 0) return {};
  requireCounts(standard, count);
  requireCounts(own, count);
  const auto types = readAll<int>(standard.get(RowQuantity::type));
  const auto senses = readTypes<constrTypeToGurobi>(standard.get(RowQuantity::type), count);
  // Rows that are given no word of their own in such a block are tried like those of any other.
  const auto tryNonlinear = readGiven<int>(own.get("trynonlin"), 1);
  const BlockNames names(*data, standard.get(RowQuantity::name));

  LockedModel locked(*data);
  const tav::idx::List positions = tav::idx::lib::Range(data->nonlinearRows.count(), count);
  const auto functions = standard.get(RowQuantity::function).as<Symbol<double>>();
  locked.add([&](GurobiModel&) {
    for (int i = 0; i < count; ++i) {
      const auto k = static_cast<std::size_t>(i);
      const Symbol<double> function = functions.get(i);
      addRow(*data, {i, function, types[k], senses[k], names.at(i)}, tryNonlinear.empty() || tryNonlinear[k] == 1);
    }
  });
  return positions;
}

}  // namespace grb
