#include "brel/load/loader.h"

#include <fmt/core.h>

#include <algorithm>
#include <limits>
#include <optional>

#include "brel/host.h"
#include "brel/load/model_views.h"
#include "brel/load/names.h"
#include "brel/load/own_group.h"
#include "tav/attr/lib/span_container.h"
#include "tav/math/symbol.h"
#include "tav/opt/quantities.h"
#include "tav/opt/support_exception.h"
#include "tav/opt/tags.h"

namespace brel::load {
namespace {

namespace tag = tav::opt::tag;
using tav::attr::lib::viewOf;
using tav::opt::BlockGroup;
using Symbol = tav::math::Symbol<double>;

// A solver without the adder for a part of the model does not support that part.
template <class Adder>
std::shared_ptr<Adder> requireAdder(std::shared_ptr<Adder> adder, const char* part) {
  if (adder) return adder;
  throw tav::opt::SupportException(fmt::format("The solver does not take {}.", part),
                                   tav::util::SourceLocation::here());
}

void noteWithheldNames(trpRec* host, const SentNames& names, const char* kind) {
  if (names.withheld == 0) return;
  const bool one = names.withheld == 1;
  const auto line = fmt::format(
      "{} {} {} longer than 255 bytes or {} blanks or odd characters; {} not sent to the solver", names.withheld, kind,
      one ? "name is" : "names are", one ? "holds" : "hold", one ? "it is" : "they are");
  kavo_link_note(host, line.c_str());
}

void addNames(BlockGroup& group, int key, const SentNames& names) {
  if (!names.names.empty()) group.set(key, "name", viewOf<const char*>(names.names));
}

void addValues(BlockGroup& group, int key, const char* name, const std::vector<double>& values) {
  if (!values.empty()) group.set(key, name, viewOf<double>(values));
}

void sendColumns(trpRec* host, tav::opt::AbstractSolver& solver, const LoadedModel& loaded,
                 const rewrite::Starts& starts) {
  using Q = tav::opt::VariableQuantity;
  const rewrite::SolverModel& sent = loaded.sent;
  const auto adder = requireAdder(solver.makeVariableAdder(tag::kIntervalDomain, std::nullopt), "variables");
  const SentNames names = sentNames(loaded.columns.names, loaded.columns.count, sent.auxiliaryNames());
  noteWithheldNames(host, names, "variable");
  const auto group = std::make_shared<BlockGroup>();
  group->set(Q::type, "type", tav::attr::BaseContainer(std::make_shared<ColumnTypes>(sent)));
  group->set(Q::lower, "lower", viewOf<double>(sent.lower()));
  group->set(Q::upper, "upper", viewOf<double>(sent.upper()));
  addNames(*group, Q::name, names);
  addValues(*group, Q::level, "level", starts.column);
  tav::opt::VariableContainer block;
  block.setGroup(tag::kVariable, group);
  block.setGroup(solver.shortName(), columnGroup({host, KAVO_COLUMN, {}, sent.columnCount()}));
  adder->add(block);
}

// The names of the rows that are sent, in their order.
SentNames rowNames(const LoadedModel& loaded) {
  const SentNames all = sentNames(loaded.rows.names, loaded.rows.count, {});
  SentNames result;
  result.withheld = all.withheld;
  if (all.names.empty()) return result;
  const std::size_t count = loaded.sent.rowCount();
  result.names.reserve(count);
  for (std::size_t r = 0; r < count; ++r) result.names.push_back(all.names[loaded.sent.userRow(r)]);
  return result;
}

// Where each of the host's rows went, -1 for one that was dropped; empty when all went to their own place.
std::vector<int> rowPositions(const LoadedModel& loaded) {
  if (loaded.sent.rowCount() == loaded.rows.count) return {};
  std::vector<int> position(loaded.rows.count, -1);
  for (std::size_t r = 0; r < loaded.sent.rowCount(); ++r) position[loaded.sent.userRow(r)] = static_cast<int>(r);
  return position;
}

void sendRows(trpRec* host, tav::opt::AbstractSolver& solver, LoadedModel& loaded, const rewrite::Starts& starts) {
  using Q = tav::opt::RowQuantity;
  const rewrite::SolverModel& sent = loaded.sent;
  if (sent.rowCount() == 0) return;
  const auto adder =
      requireAdder(solver.makeConstraintAdder(tag::kStaticBoundedDomain, tag::kLinearFunction), "linear rows");
  const SentNames names = rowNames(loaded);
  noteWithheldNames(host, names, "row");
  const auto group = std::make_shared<BlockGroup>();
  group->set(Q::type, "type", tav::attr::BaseContainer(std::make_shared<RowTypes>(sent)));
  group->set(Q::function, "function", rowFunctions(sent, loaded.rows, adder->variableSpace()));
  addNames(*group, Q::name, names);
  addValues(*group, Q::marginal, "marginal", starts.row);
  const std::vector<int> positions = rowPositions(loaded);
  tav::opt::ConstraintContainer block;
  block.setGroup(tag::kConstraint, group);
  block.setGroup(solver.shortName(), rowGroup({host, KAVO_ROW, positions, sent.rowCount()}));
  adder->add(block);
  loaded.rowAdder = adder;
}

void sendObjective(const kavo_objective& objective, tav::opt::AbstractConstraintAdder& adder) {
  using Q = tav::opt::ObjectiveQuantity;
  tav::math::LinearFunction<double> function;
  function.space = adder.variableSpace();
  function.positions = {objective.column, objective.terms};
  function.coefficients = {objective.value, objective.terms};
  function.constant = objective.constant;
  const std::vector<Symbol> functions{Symbol::ofLinear(function)};
  const std::vector<int> sense{objective.sense};
  const auto group = std::make_shared<BlockGroup>();
  group->set(Q::sense, "sense", viewOf<int>(sense));
  group->set(Q::function, "function", viewOf<Symbol>(functions));
  tav::opt::ConstraintContainer block;
  block.setGroup(tag::kConstraint, group);
  adder.add(block);
}

// Which of the host's objectives is solved, if any.
std::optional<kavo_objective> chosenObjective(trpRec* host) {
  int number = 0;
  checkHost(kavo_link_objective_number(host, &number));
  kavo_objective objective{};
  if (number == 0 || kavo_link_objective(host, static_cast<std::size_t>(number) - 1, &objective) != KAVO_OK) {
    return std::nullopt;
  }
  return objective;
}

rewrite::Starts startsOf(trpRec* host, const LoadedModel& loaded) {
  const double* primal = nullptr;
  const double* dual = nullptr;
  checkHost(kavo_link_starts(host, &primal, &dual));
  constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();
  rewrite::Starts starts;
  if (primal != nullptr) {
    starts.userColumn = {primal, loaded.columns.count};
    starts.column.assign(loaded.sent.columnCount(), kUnknown);
    std::copy(starts.userColumn.begin(), starts.userColumn.end(), starts.column.begin());
  }
  if (dual != nullptr) {
    starts.userRow = {dual, loaded.rows.count};
    for (std::size_t r = 0; r < loaded.sent.rowCount(); ++r) starts.row.push_back(dual[loaded.sent.userRow(r)]);
  }
  loaded.trail.startsForward(starts);
  return starts;
}

void requireLinear(trpRec* host) {
  const char* beyond = nullptr;
  checkHost(kavo_link_beyond_linear(host, &beyond));
  if (beyond != nullptr) throw tav::opt::SupportException(beyond, tav::util::SourceLocation::here());
}

}  // namespace

LoadedModel load(trpRec* host, tav::opt::AbstractSolver& solver) {
  requireLinear(host);
  kavo_columns columns{};
  kavo_rows rows{};
  checkHost(kavo_link_columns(host, &columns));
  checkHost(kavo_link_rows(host, &rows));
  rewrite::Trail trail;
  rewrite::SolverModel sent = rewrite::rewrite(columns, rows, trail);
  LoadedModel loaded{columns, rows, std::move(sent), std::move(trail), nullptr, nullptr};
  const rewrite::Starts starts = startsOf(host, loaded);
  sendColumns(host, solver, loaded, starts);
  sendRows(host, solver, loaded, starts);
  const auto adder = requireAdder(solver.makeConstraintAdder(tag::kSenseDomain, tag::kLinearFunction), "objectives");
  if (const auto objective = chosenObjective(host)) sendObjective(*objective, *adder);
  loaded.objectiveAdder = adder;
  return loaded;
}

}  // namespace brel::load
