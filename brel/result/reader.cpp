#include "brel/result/reader.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>
#include <utility>

#include "brel/host.h"
#include "tav/idx/lib/range.h"
#include "tav/opt/quantities.h"
#include "tav/opt/tags.h"

namespace brel::result {
namespace {

using tav::attr::Container;
using tav::attr::ContainerDict;

constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinite = std::numeric_limits<double>::infinity();
constexpr double kInfiniteObjective = 1e100;  // from here on Gurobi says infinite

// The first `count` values of a quantity; none when the solver does not have it now.
template <class T>
std::vector<T> available(const ContainerDict& part, int quantity, std::size_t count) {
  const auto container = part.get(quantity).as<T>();
  if (container.solutionCount() == 0 || count == 0) return {};
  return container.getValues(tav::idx::lib::Range(0, static_cast<int>(count)));
}

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

// What the solver holds as its bound then bounds nothing.
bool isUnboundedOrInfeasible(int status) { return status >= KAVO_INFEASIBLE && status <= KAVO_INFEASIBLE_OR_UNBOUNDED; }

}  // namespace

bool isInfinite(double objective, std::span<const double> columns, double most) {
  if (std::abs(objective) >= kInfiniteObjective) return true;
  return std::any_of(columns.begin(), columns.end(), [most](double value) { return std::abs(value) >= most; });
}

Reader::Reader(trpRec* host, tav::opt::AbstractSolver& solver, const load::TranslatedModel& model, int of)
    : host_(host),
      solver_(solver),
      services_(dynamic_cast<const tav::opt::AbstractSolverServices*>(&solver)),
      model_(model),
      of_(of) {}

kavo_finish Reader::facts() const {
  using A = tav::opt::ModelAttribute;
  using Q = tav::opt::ObjectiveQuantity;
  const auto facts = solver_.makeModelAttributes(tav::opt::tag::kSolver, {});
  const auto objectives = solver_.makeConstraintContainers(model_.objectiveAdder, std::nullopt, {}).first;
  kavo_finish finish{};
  finish.bound = finish.relaxation = kUnknown;
  const auto status = facts->get(A::status).as<int>();
  finish.status = status.get();
  finish.stop = static_cast<int>(services_ ? services_->stopReason() : tav::opt::StopReason::finished);
  finish.solutions = status.solutionCount();
  finish.objective = finish.solutions > 0 ? valueOf(objectives.get(Q::value)) : kUnknown;
  const bool hasRun = finish.stop != KAVO_STOP_NOT_RUN;
  if (hasRun && !isUnboundedOrInfeasible(finish.status)) finish.bound = valueOf(objectives.get(Q::bound));
  finish.gap = gapOf(finish.objective, finish.bound);
  finish.iterations = countOf(facts->get(A::iterations));
  finish.nodes = countOf(facts->get(A::nodes));
  const auto seconds = facts->get(A::runTime).as<double>();
  finish.seconds = seconds.solutionCount() > 0 ? seconds.get() : kUnknown;
  finish.condition = services_ ? services_->conditionNumber(false).value_or(kUnknown) : kUnknown;
  finish.exact_condition = services_ ? services_->conditionNumber(true).value_or(kUnknown) : kUnknown;
  return finish;
}

void Reader::readPoint() {
  const int count = static_cast<int>(model_.sent.columnCount());
  if (!primal_.empty() || count == 0) return;
  const auto level = solver_.makeVariableContainers({}).get(tav::opt::VariableQuantity::level).as<double>();
  primal_ = level.getValues(tav::idx::lib::Range(0, count));
}

std::span<const double> Reader::columns() {
  readPoint();
  return std::span<const double>(primal_).first(model_.user.columns.count);
}

void Reader::read(Extent extent) {
  readColumns(extent);
  if (extent != Extent::basis) point_.emplace(model_.user, primal_);
  if (extent == Extent::point) {
    evaluateRows();
  } else {
    readRows(extent);
  }
}

std::span<double> Reader::values(int quantity) {
  double* first = nullptr;
  std::size_t count = 0;
  checkHost(kavo_link_result(host_, quantity + of_, &first, &count));
  return {first, count};
}

std::span<int> Reader::basis(int kind) {
  int* first = nullptr;
  std::size_t count = 0;
  checkHost(kavo_link_result_basis(host_, kind + of_, &first, &count));
  return {first, count};
}

// The first of the solver's columns are the user's.
bool Reader::giveColumns(const Container<double>& from, int quantity) {
  const std::size_t count = model_.user.columns.count;
  if (from.solutionCount() == 0 || count == 0) return false;
  from.get(tav::idx::lib::Range(0, static_cast<int>(count)), values(quantity));
  return true;
}

void Reader::readColumns(Extent extent) {
  using Q = tav::opt::VariableQuantity;
  const auto part = solver_.makeVariableContainers({});
  const std::size_t own = model_.user.columns.count, all = model_.sent.columnCount();
  if (extent != Extent::point) columnBasis_ = available<int>(part, Q::basis, all);
  if (!columnBasis_.empty()) std::copy_n(columnBasis_.begin(), own, basis(KAVO_COLUMN).begin());
  if (extent == Extent::basis) return;
  readPoint();
  std::copy_n(primal_.begin(), own, values(KAVO_PRIMAL).begin());
  if (extent == Extent::all) hasDuals_ = giveColumns(part.get(Q::reducedCost).as<double>(), KAVO_REDUCED_COST);
}

ContainerDict Reader::rowPart() const {
  return solver_.makeConstraintContainers(model_.rowAdder, std::nullopt, {}).first;
}

std::vector<double> Reader::quadraticDuals() const {
  if (model_.quadraticRowAdder == nullptr) return {};
  const auto part = solver_.makeConstraintContainers(model_.quadraticRowAdder, std::nullopt, {}).first;
  return available<double>(part, tav::opt::RowQuantity::marginal, model_.sent.beyond()->quadratic.heads.size());
}

// Of values of the linear rows that were sent: those of the user's own, and of those that rules made.
template <class T>
std::pair<std::span<const T>, std::span<const T>> Reader::split(const std::vector<T>& sent) const {
  if (sent.empty()) return {};
  const std::span<const T> all(sent);
  return {all.first(model_.sent.rowCount()), all.subspan(model_.sent.rowCount())};
}

// Every row that was sent stands for a row of the user's; where a rule changed more than that, the trail mends it.
template <class T>
void Reader::scatter(std::span<const T> from, std::span<T> to) const {
  if (to.empty()) return;
  for (std::size_t r = 0; r < from.size(); ++r) to[model_.sent.userRow(r)] = from[r];
}

void Reader::readRows(Extent extent) {
  using Q = tav::opt::RowQuantity;
  const auto part = rowPart();
  const bool hasPoint = extent != Extent::basis;
  const rewrite::Beyond* beyond = model_.sent.beyond();
  const std::size_t own = model_.sent.rowCount();
  const std::size_t all = own + (beyond == nullptr ? 0 : beyond->linear.heads.size());
  const auto rowBasis = available<int>(part, Q::basis, all);
  std::vector<double> slack = available<double>(part, Q::slack, hasPoint ? own : 0);
  const auto duals = available<double>(part, Q::marginal, hasPoint ? all : 0);
  const auto ofQuadratic = hasPoint ? quadraticDuals() : std::vector<double>();
  for (std::size_t r = 0; r < slack.size(); ++r) slack[r] += model_.sent.side(r);

  rewrite::RowResults results;
  results.point = point();
  results.solverPrimal = primal_;
  results.solverColumnBasis = columnBasis_;
  results.solverActivity = slack;
  std::tie(results.solverDual, results.linearDual) = split(duals);
  std::tie(results.solverRowBasis, results.linearBasis) = split(rowBasis);
  results.quadraticDual = ofQuadratic;
  // A quantity of rows exists when the solver has it for the rows that it got; without any, the point tells.
  const bool hasActivity = hasPoint && (own == 0 || !slack.empty());
  const bool noneSent = model_.rowAdder == nullptr && model_.quadraticRowAdder == nullptr;
  const bool hasDuals = !duals.empty() || !ofQuadratic.empty() || (noneSent && hasDuals_);
  if (hasActivity) results.activity = values(KAVO_ACTIVITY);
  if (hasDuals) results.dual = values(KAVO_DUAL);
  if (!columnBasis_.empty() && (noneSent || !rowBasis.empty())) results.basis = basis(KAVO_ROW);
  hasDuals_ = hasDuals_ || hasDuals;
  scatter(results.solverActivity, results.activity);
  scatter(results.solverDual, results.dual);
  scatter(results.solverRowBasis, results.basis);
  model_.trail.resultsBack(results);
  if (hasActivity) writeSlacks(results.activity);
}

void Reader::evaluateRows() {
  const std::span<double> activity = values(KAVO_ACTIVITY);
  for (std::size_t i = 0; i < activity.size(); ++i) activity[i] = point_->activity(i);
  writeSlacks(activity);
}

// The distance to the nearer side: negative when the row is violated, infinite when it has no side.
void Reader::writeSlacks(std::span<const double> activity) {
  const std::span<double> slack = values(KAVO_SLACK);
  for (std::size_t i = 0; i < slack.size(); ++i) {
    const rewrite::Sides sides(model_.user.rows, i);
    const double below = sides.hasLower() ? activity[i] - sides.lower : kInfinite;
    const double above = sides.hasUpper() ? sides.upper - activity[i] : kInfinite;
    slack[i] = std::min(below, above);
  }
}

// Both ends of a quantity of columns; empty when the solver does not have it.
Reader::EndValues Reader::endsOf(const ContainerDict& part, int low, int high, std::size_t count) const {
  return {available<double>(part, low, count), available<double>(part, high, count)};
}

void Reader::giveEnds(const EndValues& from, int low, int high) {
  std::copy_n(from.low.begin(), model_.user.columns.count, values(low).begin());
  std::copy_n(from.high.begin(), model_.user.columns.count, values(high).begin());
}

std::string Reader::readRanges() {
  using V = tav::opt::VariableQuantity;
  using R = tav::opt::RowQuantity;
  using O = tav::opt::ObjectiveQuantity;
  const std::size_t columns = model_.sent.columnCount(), own = model_.sent.rowCount();
  const rewrite::Beyond* beyond = model_.sent.beyond();
  const std::size_t rows = own + (beyond == nullptr ? 0 : beyond->linear.heads.size());
  const auto objectives = solver_.makeConstraintContainers(model_.objectiveAdder, std::nullopt, {}).first;
  const auto variables = solver_.makeVariableContainers({});
  const auto columnBasis = available<int>(variables, V::basis, columns);
  const auto primal = available<double>(variables, V::level, columns);
  if (columnBasis.empty()) return "the solver ended without a basis, as barrier does without crossover";
  const EndValues costs = endsOf(objectives, O::coefficientRangeLow, O::coefficientRangeHigh, columns);
  const EndValues lower = endsOf(variables, V::lowerRangeLow, V::lowerRangeHigh, columns);
  const EndValues upper = endsOf(variables, V::upperRangeLow, V::upperRangeHigh, columns);
  const EndValues sides = rows == 0 ? EndValues() : endsOf(rowPart(), R::sideRangeLow, R::sideRangeHigh, rows);
  if (costs.isEmpty() || lower.isEmpty() || upper.isEmpty() || (rows > 0 && sides.isEmpty())) {
    return "the solver, which computes them last, was stopped by a limit before it had them";
  }

  giveEnds(costs, KAVO_COST_LOW, KAVO_COST_HIGH);
  giveEnds(lower, KAVO_LOWER_LOW, KAVO_LOWER_HIGH);
  giveEnds(upper, KAVO_UPPER_LOW, KAVO_UPPER_HIGH);
  rewrite::RangeResults ranges;
  ranges.lower = {lower.low, lower.high};
  ranges.upper = {upper.low, upper.high};
  ranges.columnBasis = columnBasis;
  ranges.primal = primal;
  const std::span<const double> low(sides.low), high(sides.high);
  if (rows > own) ranges.linear = {low.subspan(own), high.subspan(own)};
  ranges.userLower = {values(KAVO_LOWER_LOW), values(KAVO_LOWER_HIGH)};
  ranges.userUpper = {values(KAVO_UPPER_LOW), values(KAVO_UPPER_HIGH)};
  ranges.userSide = {values(KAVO_SIDE_LOW), values(KAVO_SIDE_HIGH)};
  for (std::size_t r = 0; r < own; ++r) {
    const double side = model_.sent.side(r);
    ranges.userSide.give(model_.sent.userRow(r), side + low[r], side + high[r]);
  }
  model_.trail.rangesBack(ranges);
  return {};
}

}  // namespace brel::result
