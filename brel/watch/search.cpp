#include "brel/watch/search.h"

#include <cmath>
#include <limits>

#include "tav/opt/quantities.h"
#include "tav/opt/solver_services.h"
#include "tav/opt/tags.h"

namespace brel::watch {
namespace {

using tav::opt::Context;
namespace tag = tav::opt::tag;

constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

// Solvers know no best value and no bound as infinite ones.
double finite(double value) { return std::isfinite(value) ? value : kUnknown; }

double first(const tav::attr::Container<double>& values) {
  return values.solutionCount() > 0 ? finite(values.get(0)) : kUnknown;
}

tav::attr::Container<double> levels(tav::opt::AbstractSolver& solver, const Context& context) {
  return solver.makeVariableContainers(context).get(tav::opt::VariableQuantity::level).as<double>();
}

int objectiveCount(tav::opt::AbstractSolver& solver, const load::TranslatedModel& model) {
  const auto objectives = solver.makeConstraintContainers(model.objectiveAdder, std::nullopt, {}).first;
  return objectives.get(tav::opt::ObjectiveQuantity::value).as<double>().size();
}

// What a solver then holds as its bound bounds nothing.
bool isUnboundedOrInfeasible(int status) { return status >= KAVO_INFEASIBLE && status <= KAVO_INFEASIBLE_OR_UNBOUNDED; }

}  // namespace

Search::Search(tav::opt::AbstractSolver& solver, const load::TranslatedModel& model)
    : solver_(solver),
      model_(model),
      isMaximized_(model.user.objective && model.user.objective->sense == KAVO_MAXIMIZE),
      hasOneObjective_(objectiveCount(solver, model) <= 1),
      variables_(static_cast<std::size_t>(levels(solver, {}).size())),
      atNode_(sourcesIn({tag::kContext, kNodeEvent})),
      atPoint_(sourcesIn({tag::kContext, kPointEvent})),
      point_(levels(solver, {tag::kContext, kPointEvent})),
      values_(variables_) {
  if (model.user.objective) objective_.emplace(model.user, *model.user.objective);
}

Search::Sources Search::sourcesIn(const Context& context) const {
  using Q = tav::opt::ObjectiveQuantity;
  const auto facts = solver_.makeModelAttributes(tag::kSolver, context);
  const auto objective = solver_.makeConstraintContainers(model_.objectiveAdder, std::nullopt, context).first;
  return {facts->get(tav::opt::ModelAttribute::nodes).as<unsigned long long>(), objective.get(Q::value).as<double>(),
          objective.get(Q::bound).as<double>()};
}

Search::Facts Search::read(const Sources& sources) const {
  const bool hasNodes = sources.nodes.solutionCount() > 0;
  const double nodes = hasNodes ? static_cast<double>(sources.nodes.get()) : kUnknown;
  return hasOneObjective_ ? Facts{nodes, first(sources.best), first(sources.bound)} : Facts{nodes, kUnknown, kUnknown};
}

Search::Facts Search::at(int event) {
  if (!isUsers_) isUsers_ = isInUsersModel();
  const Facts facts = read(event == kPointEvent ? atPoint_ : atNode_);
  return *isUsers_ ? facts : Facts{facts.nodes, kUnknown, kUnknown};
}

Search::Facts Search::atEnd() {
  const auto point = levels(solver_, {});
  if (static_cast<std::size_t>(point.size()) != variables_) return {kUnknown, kUnknown, kUnknown};
  const auto status = solver_.makeModelAttributes(tag::kSolver, {})->get(tav::opt::ModelAttribute::status).as<int>();
  Facts facts = read(sourcesIn({}));
  if (!hasOneObjective_ && point.solutionCount() > 0) {
    point.getAll(values_);
    facts.best = objectiveAt(std::span<const double>(values_).first(model_.user.columns.count));
  }
  if (status.solutionCount() == 0) facts.best = kUnknown;
  if (isUnboundedOrInfeasible(status.get())) facts.bound = kUnknown;
  if (const auto* services = dynamic_cast<const tav::opt::AbstractSolverServices*>(&solver_)) {
    if (services->stopReason() == tav::opt::StopReason::cutoff) facts.bound = kUnknown;
  }
  return facts;
}

std::span<const double> Search::newPoint() {
  if (!isInUsersModel()) return {};
  point_.getAll(values_);
  return std::span<const double>(values_).first(model_.user.columns.count);
}

}  // namespace brel::watch
