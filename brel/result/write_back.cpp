#include "brel/result/write_back.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "brel/host.h"
#include "brel/result/violations.h"
#include "tav/opt/quantities.h"
#include "tav/opt/solver_services.h"
#include "tav/opt/tags.h"

namespace brel::result {
namespace {

constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

// The values of all elements that the solver has; none when it has no such quantity now.
template <class T>
std::vector<T> available(const tav::attr::ContainerDict& part, int quantity) {
  const auto container = part.get(quantity).as<T>();
  return container.solutionCount() > 0 ? container.getAll() : std::vector<T>();
}

// The first entries of the solver's values are those of the user's columns.
template <class T>
void giveColumns(const std::vector<T>& values, T* target, std::size_t count) {
  std::copy_n(values.begin(), count, target);
}

class Writer {
 public:
  Writer(trpRec* host, tav::opt::AbstractSolver& solver, const load::LoadedModel& loaded)
      : host_(host), solver_(solver), loaded_(loaded) {}

  // hasPoint: a point was found; without one no value that belongs to a point is read.
  void writeColumns(bool hasPoint) {
    using Q = tav::opt::VariableQuantity;
    const auto part = solver_.makeVariableContainers({});
    columnBasis_ = available<int>(part, Q::basis);
    if (!columnBasis_.empty()) giveColumns(columnBasis_, basis(KAVO_COLUMN).data(), loaded_.columns.count);
    if (!hasPoint) return;
    primal_ = available<double>(part, Q::level);
    giveColumns(primal_, values(KAVO_PRIMAL).data(), loaded_.columns.count);
    const auto reducedCosts = available<double>(part, Q::reducedCost);
    if (reducedCosts.size() == primal_.size() && !reducedCosts.empty()) {
      giveColumns(reducedCosts, values(KAVO_REDUCED_COST).data(), loaded_.columns.count);
    }
  }

  void writeRows(bool hasPoint) {
    using Q = tav::opt::RowQuantity;
    const auto part = solver_.makeConstraintContainers(loaded_.rowAdder, std::nullopt, {}).first;
    const auto rowBasis = available<int>(part, Q::basis);
    const auto slack = hasPoint ? available<double>(part, Q::slack) : std::vector<double>();
    const auto duals = hasPoint ? available<double>(part, Q::marginal) : std::vector<double>();
    std::vector<double> activity(slack.size());
    for (std::size_t r = 0; r < slack.size(); ++r) activity[r] = slack[r] + loaded_.sent.side(r);

    rewrite::RowResults results;
    results.solverPrimal = primal_;
    results.solverColumnBasis = columnBasis_;
    results.solverActivity = activity;
    results.solverDual = duals;
    results.solverRowBasis = rowBasis;
    // A quantity of rows exists when the solver has it for the rows that it got; without any, the point tells.
    const bool noneSent = loaded_.sent.rowCount() == 0;
    const bool hasActivity = hasPoint && (noneSent || !activity.empty());
    if (hasActivity) results.activity = values(KAVO_ACTIVITY);
    if (!duals.empty() || (noneSent && hasPoint && hasReducedCosts())) results.dual = values(KAVO_DUAL);
    if (!columnBasis_.empty() && (noneSent || !rowBasis.empty())) results.basis = basis(KAVO_ROW);
    scatter(results);
    loaded_.trail.resultsBack(results);
    if (hasActivity) writeSlacks(results.activity);
  }

  const std::vector<double>& primal() const { return primal_; }

 private:
  std::span<double> values(int quantity) {
    double* first = nullptr;
    std::size_t count = 0;
    checkHost(kavo_link_result(host_, quantity, &first, &count));
    return {first, count};
  }

  std::span<int> basis(int kind) {
    int* first = nullptr;
    std::size_t count = 0;
    checkHost(kavo_link_result_basis(host_, kind, &first, &count));
    return {first, count};
  }

  bool hasReducedCosts() const {
    const auto part = solver_.makeVariableContainers({});
    return part.get(tav::opt::VariableQuantity::reducedCost).solutionCount() > 0;
  }

  // Every row that was sent stands for a row of the user's; where a rule changed more than that, the trail mends it.
  void scatter(const rewrite::RowResults& results) const {
    const auto give = [this](const auto& from, const auto& to) {
      if (to.empty()) return;
      for (std::size_t r = 0; r < from.size(); ++r) to[loaded_.sent.userRow(r)] = from[r];
    };
    give(results.solverActivity, results.activity);
    give(results.solverDual, results.dual);
    give(results.solverRowBasis, results.basis);
  }

  // The distance to the nearer side: negative when the row is violated, infinite when it has no side.
  void writeSlacks(std::span<const double> activity) {
    const auto slack = values(KAVO_SLACK);
    constexpr double kInfinite = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < slack.size(); ++i) {
      const double lower = loaded_.rows.lower[i];
      const double upper = loaded_.rows.upper[i];
      const double below = lower <= -rewrite::kUserInfinity ? kInfinite : activity[i] - lower;
      const double above = upper >= rewrite::kUserInfinity ? kInfinite : upper - activity[i];
      slack[i] = std::min(below, above);
    }
  }

  trpRec* host_;
  tav::opt::AbstractSolver& solver_;
  const load::LoadedModel& loaded_;
  std::vector<double> primal_;
  std::vector<int> columnBasis_;
};

double valueOf(const tav::attr::BaseContainer& container) {
  const auto values = container.as<double>();
  return values.solutionCount() > 0 ? values.get(0) : kUnknown;
}

double countOf(const tav::attr::BaseItem& item) {
  const auto count = item.as<unsigned long long>();
  return count.solutionCount() > 0 ? static_cast<double>(count.get()) : kUnknown;
}

// The relative gap, |objective - bound| / |objective|.
double gapOf(double objective, double bound) {
  const double distance = std::abs(objective - bound);
  return distance == 0 ? 0 : distance / std::abs(objective);
}

// What Gurobi holds as its bound then bounds nothing.
bool isUnboundedOrInfeasible(int status) { return status >= KAVO_INFEASIBLE && status <= KAVO_INFEASIBLE_OR_UNBOUNDED; }

kavo_finish finishOf(tav::opt::AbstractSolver& solver, const load::LoadedModel& loaded) {
  using A = tav::opt::ModelAttribute;
  const auto facts = solver.makeModelAttributes(tav::opt::tag::kSolver, {});
  const auto objectives = solver.makeConstraintContainers(loaded.objectiveAdder, std::nullopt, {}).first;
  const auto* services = dynamic_cast<tav::opt::AbstractSolverServices*>(&solver);
  kavo_finish finish{};
  finish.bound = kUnknown;
  const auto status = facts->get(A::status).as<int>();
  finish.status = status.get();
  finish.stop = static_cast<int>(services ? services->stopReason() : tav::opt::StopReason::finished);
  finish.solutions = status.solutionCount();
  finish.objective = finish.solutions > 0 ? valueOf(objectives.get(tav::opt::ObjectiveQuantity::value)) : kUnknown;
  if (!isUnboundedOrInfeasible(finish.status)) {
    finish.bound = valueOf(objectives.get(tav::opt::ObjectiveQuantity::bound));
  }
  finish.gap = gapOf(finish.objective, finish.bound);
  finish.iterations = countOf(facts->get(A::iterations));
  finish.nodes = countOf(facts->get(A::nodes));
  const auto seconds = facts->get(A::runTime).as<double>();
  finish.seconds = seconds.solutionCount() > 0 ? seconds.get() : kUnknown;
  return finish;
}

}  // namespace

void writeBack(trpRec* host, tav::opt::AbstractSolver& solver, const load::LoadedModel& loaded) {
  const kavo_finish finish = finishOf(solver, loaded);
  Writer writer(host, solver, loaded);
  writer.writeColumns(finish.solutions > 0);
  writer.writeRows(finish.solutions > 0);
  if (finish.solutions > 0) checkPoint(host, loaded.columns, loaded.rows, writer.primal());
  checkHost(kavo_link_finish(host, &finish));
}

}  // namespace brel::result
