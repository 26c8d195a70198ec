#include "brel/result/write_back.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <tuple>
#include <vector>

#include "brel/host.h"
#include "brel/result/violations.h"
#include "brel/rewrite/evaluate.h"
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
  Writer(trpRec* host, tav::opt::AbstractSolver& solver, const load::TranslatedModel& model)
      : host_(host), solver_(solver), model_(model) {}

  // hasPoint: a point was found; without one no value that belongs to a point is read.
  void writeColumns(bool hasPoint) {
    using Q = tav::opt::VariableQuantity;
    const auto part = solver_.makeVariableContainers({});
    columnBasis_ = available<int>(part, Q::basis);
    if (!columnBasis_.empty()) giveColumns(columnBasis_, basis(KAVO_COLUMN).data(), model_.user.columns.count);
    if (!hasPoint) return;
    primal_ = available<double>(part, Q::level);
    giveColumns(primal_, values(KAVO_PRIMAL).data(), model_.user.columns.count);
    const auto reducedCosts = available<double>(part, Q::reducedCost);
    if (reducedCosts.size() == primal_.size() && !reducedCosts.empty()) {
      giveColumns(reducedCosts, values(KAVO_REDUCED_COST).data(), model_.user.columns.count);
    }
  }

  void writeRows(const rewrite::UserPoint* point) {
    using Q = tav::opt::RowQuantity;
    const auto part = solver_.makeConstraintContainers(model_.rowAdder, std::nullopt, {}).first;
    const auto rowBasis = available<int>(part, Q::basis);
    const auto slack = point != nullptr ? available<double>(part, Q::slack) : std::vector<double>();
    const auto duals = point != nullptr ? available<double>(part, Q::marginal) : std::vector<double>();
    const auto quadraticDuals = point != nullptr ? quadraticDual() : std::vector<double>();
    std::vector<double> activity(std::min(slack.size(), model_.sent.rowCount()));
    for (std::size_t r = 0; r < activity.size(); ++r) activity[r] = slack[r] + model_.sent.side(r);

    rewrite::RowResults results;
    results.point = point;
    results.solverPrimal = primal_;
    results.solverColumnBasis = columnBasis_;
    results.solverActivity = activity;
    std::tie(results.solverDual, results.linearDual) = split(duals);
    std::tie(results.solverRowBasis, results.linearBasis) = split(rowBasis);
    results.quadraticDual = quadraticDuals;
    // A quantity of rows exists when the solver has it for the rows that it got; without any, the point tells.
    const bool hasActivity = point != nullptr && (model_.sent.rowCount() == 0 || !activity.empty());
    const bool noneSent = model_.rowAdder == nullptr && model_.quadraticRowAdder == nullptr;
    const bool hasDuals = !duals.empty() || !quadraticDuals.empty() || (noneSent && point && hasReducedCosts());
    if (hasActivity) results.activity = values(KAVO_ACTIVITY);
    if (hasDuals) results.dual = values(KAVO_DUAL);
    if (!columnBasis_.empty() && (noneSent || !rowBasis.empty())) results.basis = basis(KAVO_ROW);
    scatter(results);
    model_.trail.resultsBack(results);
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

  // Values of the linear rows that were sent: of those that are the user's own, and of those that rules made. The
  // solver may have more, of its own.
  template <class T>
  std::pair<std::span<const T>, std::span<const T>> split(const std::vector<T>& values) const {
    if (values.empty()) return {};
    const std::span<const T> all(values);
    const rewrite::Beyond* beyond = model_.sent.beyond();
    const std::size_t own = model_.sent.rowCount();
    return {all.first(own), all.subspan(own, beyond == nullptr ? 0 : beyond->linear.heads.size())};
  }

  std::vector<double> quadraticDual() const {
    if (model_.quadraticRowAdder == nullptr) return {};
    const auto part = solver_.makeConstraintContainers(model_.quadraticRowAdder, std::nullopt, {}).first;
    return available<double>(part, tav::opt::RowQuantity::marginal);
  }

  // Every row that was sent stands for a row of the user's; where a rule changed more than that, the trail mends it.
  void scatter(const rewrite::RowResults& results) const {
    const auto give = [this](const auto& from, const auto& to) {
      if (to.empty()) return;
      for (std::size_t r = 0; r < from.size(); ++r) to[model_.sent.userRow(r)] = from[r];
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
      const double lower = model_.user.rows.lower[i];
      const double upper = model_.user.rows.upper[i];
      const double below = lower <= -rewrite::kUserInfinity ? kInfinite : activity[i] - lower;
      const double above = upper >= rewrite::kUserInfinity ? kInfinite : upper - activity[i];
      slack[i] = std::min(below, above);
    }
  }

  trpRec* host_;
  tav::opt::AbstractSolver& solver_;
  const load::TranslatedModel& model_;
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

// What was solved is not the user's model then, and its objective value not the user's.
void tellRelaxation(trpRec* host, double value, kavo_finish& finish) {
  finish.status = KAVO_UNKNOWN;
  finish.stop = KAVO_STOP_SUBOPTIMAL;
  finish.objective = finish.bound = finish.gap = kUnknown;
  const auto note = fmt::format("the values are those of a feasible relaxation, whose cost is {}", value);
  kavo_link_note(host, note.c_str());
}

kavo_finish finishOf(tav::opt::AbstractSolver& solver, const tav::opt::AbstractSolverServices* services,
                     const load::TranslatedModel& model) {
  using A = tav::opt::ModelAttribute;
  const auto facts = solver.makeModelAttributes(tav::opt::tag::kSolver, {});
  const auto objectives = solver.makeConstraintContainers(model.objectiveAdder, std::nullopt, {}).first;
  kavo_finish finish{};
  finish.bound = finish.relaxation = finish.condition = finish.exact_condition = kUnknown;
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

kavo_finish writeBack(trpRec* host, tav::opt::AbstractSolver& solver, const load::TranslatedModel& model) {
  const auto* services = dynamic_cast<const tav::opt::AbstractSolverServices*>(&solver);
  kavo_finish finish = finishOf(solver, services, model);
  const auto relaxation = services != nullptr ? services->relaxation() : std::nullopt;
  if (relaxation && finish.solutions > 0) tellRelaxation(host, *relaxation, finish);
  Writer writer(host, solver, model);
  writer.writeColumns(finish.solutions > 0);
  std::optional<rewrite::UserPoint> point;
  if (finish.solutions > 0) point.emplace(model.user, model.sent.beyond(), writer.primal());
  writer.writeRows(point ? &*point : nullptr);
  if (point) checkPoint(model.user, *point);
  return finish;
}

}  // namespace brel::result
