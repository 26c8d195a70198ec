#include <memory>
#include <span>

#include "brel/load/loaded.h"
#include "tav/idx/lib/list.h"
#include "tav/opt/quantities.h"
#include "tav/opt/tags.h"

namespace brel::load {
namespace {

namespace tag = tav::opt::tag;

template <class T>
std::vector<T> copied(const T* values, std::size_t count) {
  return {values, values + count};
}

rewrite::Change changeOf(const kavo_changes& changes) {
  rewrite::Change change;
  change.boundColumns = copied(changes.bound_column, changes.bounds);
  change.sideRows = copied(changes.side_row, changes.sides);
  change.coefficientRows = copied(changes.coefficient_row, changes.coefficients);
  change.coefficientColumns = copied(changes.coefficient_column, changes.coefficients);
  change.coefficientValues = copied(changes.coefficient_value, changes.coefficients);
  return change;
}

void setBounds(tav::opt::AbstractSolver& solver, const std::vector<int>& columns, int quantity,
               std::span<const double> bounds) {
  std::vector<double> values;
  values.reserve(columns.size());
  for (const int column : columns) values.push_back(bounds[static_cast<std::size_t>(column)]);
  const auto container = solver.makeVariableContainers({}).get(quantity).as<double>();
  container.set(std::make_shared<tav::idx::lib::List>(columns), values);
}

// Row by row; the entries of a row stand together.
void queueCoefficients(const rewrite::SolverModel& sent, const rewrite::Change& change,
                       tav::opt::AbstractSolverServices& services) {
  const auto& rows = change.coefficientRows;
  std::vector<int> columns;
  std::vector<double> values;
  for (std::size_t k = 0; k < rows.size(); ++k) {
    if (rows[k] == rewrite::kNoUserRow) continue;
    columns.push_back(change.coefficientColumns[k]);
    values.push_back(change.coefficientValues[k]);
    if (k + 1 < rows.size() && rows[k + 1] == rows[k]) continue;
    services.queueCoefficients(static_cast<int>(sent.position(static_cast<std::size_t>(rows[k]))), columns, values);
    columns.clear();
    values.clear();
  }
}

void setConstant(const TranslatedModel& model, tav::opt::AbstractSolver& solver) {
  const auto function = solver.makeConstraintContainers(model.objectiveAdder, std::nullopt, {}).second;
  function.get(tav::opt::FunctionQuantity::constant).as<double>().set(0, model.user.objective->constant);
}

}  // namespace

void sendChanges(TranslatedModel& model, const kavo_changes& changes, tav::opt::AbstractSolver& solver,
                 tav::opt::AbstractSolverServices& services) {
  using Q = tav::opt::VariableQuantity;
  model.objectiveAdder = solver.makeConstraintAdder(tag::kSenseDomain, tag::kLinearFunction);
  if (model.sent.rowCount() > 0) {
    model.rowAdder = solver.makeConstraintAdder(tag::kStaticBoundedDomain, tag::kLinearFunction);
  }
  rewrite::Change change = changeOf(changes);
  model.trail.changeForward(change);
  if (!change.boundColumns.empty()) {
    setBounds(solver, change.boundColumns, Q::lower, model.sent.lower());
    setBounds(solver, change.boundColumns, Q::upper, model.sent.upper());
  }
  for (const int row : change.sideRows) {
    const std::size_t position = model.sent.position(static_cast<std::size_t>(row));
    services.queueSide(static_cast<int>(position), model.sent.side(position));
  }
  queueCoefficients(model.sent, change, services);
  if (changes.costs > 0) {
    services.queueObjective(copied(changes.cost_column, changes.costs), copied(changes.cost_value, changes.costs));
  }
  if (changes.constant != 0 && model.user.objective) setConstant(model, solver);
}

}  // namespace brel::load
