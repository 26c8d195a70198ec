#include <fmt/core.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "brel/host.h"
#include "brel/plugin/plugins.h"
#include "brel/result/objective_difference.h"
#include "brel/result/reader.h"
#include "brel/rewrite/objective_function.h"
#include "tav/idx/lib/range.h"
#include "tav/opt/quantities.h"

namespace brel::plugin {
namespace {

// Points that are this close, in proportion to their size, differ by nothing but noise.
constexpr double kSame = 1e-9;

bool isSame(double a, double b) { return std::abs(a - b) <= kSame * std::max({1.0, std::abs(a), std::abs(b)}); }

// Gives the host all points that the solver has kept.
class Pool : public AbstractPlugin {
 public:
  void read(Solve& solve) override {
    if (!isWanted(solve)) return;
    if (solve.services != nullptr && !solve.services->structureIntact()) {
      return kavo_link_note(solve.host, "no pool: a feasible relaxation was solved");
    }
    using Q = tav::opt::VariableQuantity;
    const auto points = solve.solver.makeVariableContainers({}).get(Q::level).as<double>();
    const std::size_t columns = solve.model.user.columns.count;
    const bool mayRepeat = points.size() > static_cast<int>(columns);  // in columns that are not the user's
    int repeated = 0;
    for (int k = 0; k < points.solutionCount(); ++k) {
      std::vector<double> point(columns);
      points.get(tav::idx::lib::Range(0, static_cast<int>(columns)), point, k);
      const double objective = objectiveOf(solve, point, k);
      if (result::isInfinite(objective, point, result::kInfiniteValue)) continue;
      if (mayRepeat && isKnown(solve.model.user.columns, point)) {
        ++repeated;
        continue;
      }
      give(solve.host, objective, point);
      compare(solve.model.user, objective, point);
      if (mayRepeat) given_.push_back(std::move(point));
    }
    if (repeated > 0) tellRepeated(solve.host, repeated);
    if (worst_.count > 0) tellWorst(solve.host);
  }

 private:
  // They took the places of others, as many points as were asked for.
  static void tellRepeated(trpRec* host, int count) {
    const auto line = fmt::format(
        "{} of the solver's points {} others in variables that only express the model and {} left out of the pool; "
        "a larger PoolSolutions makes room for more",
        count, count == 1 ? "differs from" : "differ from", count == 1 ? "is" : "are");
    kavo_link_note(host, line.c_str());
  }

  static bool isWanted(const Solve& solve) {
    if (solve.values.whole(settings::PluginAttribute::pool) != 0) return true;
    const auto parameters = solve.solver.makeModelAttributes(solve.solver.shortName(), {});
    if (!parameters) return false;
    const auto mode = parameters->get("PoolSearchMode").as<int>();
    return mode.solutionCount() > 0 && mode.get() != 0;
  }

  // Where several objectives were sent, the solver's numbers are those of another one than the user's choice.
  double objectiveOf(const Solve& solve, std::span<const double> point, int k) {
    const UserModel& user = solve.model.user;
    if (!user.objective) return 0;
    if (!solve.choices.allObjectives) {
      using Q = tav::opt::ObjectiveQuantity;
      const auto part = solve.solver.makeConstraintContainers(solve.model.objectiveAdder, std::nullopt, {}).first;
      return part.get(Q::value).as<double>().get(0, k);
    }
    return ownObjective(user, point);
  }

  double ownObjective(const UserModel& user, std::span<const double> point) {
    if (!function_) function_.emplace(user, *user.objective);
    return function_->at(point);
  }

  // Whatever its objective: a solver may hold that in a column of its own, to a tolerance only, as it does with values
  // that are to be whole.
  bool isKnown(const kavo_columns& columns, const std::vector<double>& point) const {
    const auto isSameAt = [&](const std::vector<double>& known, std::size_t j) {
      const bool isWhole = columns.type[j] == KAVO_INTEGER || columns.type[j] == KAVO_BINARY;
      return isWhole ? std::round(point[j]) == std::round(known[j]) : isSame(point[j], known[j]);
    };
    return std::any_of(given_.begin(), given_.end(), [&](const std::vector<double>& known) {
      for (std::size_t j = 0; j < point.size(); ++j) {
        if (!isSameAt(known, j)) return false;
      }
      return true;
    });
  }

  void compare(const UserModel& user, double objective, std::span<const double> point) {
    ++count_;
    if (!user.objective) return;
    const double own = ownObjective(user, point);
    if (!result::isObjectiveOff(own, objective)) return;
    const int count = worst_.count + 1;
    if (count == 1 || std::abs(own - objective) > std::abs(worst_.own - worst_.solvers)) {
      worst_ = {count, count_, own, objective};
    }
    worst_.count = count;
  }

  void tellWorst(trpRec* host) const {
    const auto line = fmt::format(
        "pool: the solver's objective is not that of the model's own functions at {} of the points, most at point {}: "
        "{:.12g}, by the model's functions {:.12g}",
        worst_.count, worst_.point, worst_.solvers, worst_.own);
    kavo_link_note(host, line.c_str());
  }

  static void give(trpRec* host, double objective, const std::vector<double>& point) {
    double* values = nullptr;
    std::size_t count = 0;
    checkHost(kavo_link_pool_point(host, objective, &values, &count));
    std::copy(point.begin(), point.end(), values);
  }

  // The point, counted from 1, whose objective is the farthest off, and at how many it is off.
  struct Worst {
    int count = 0, point = 0;
    double own = 0, solvers = 0;
  };

  std::optional<rewrite::ObjectiveFunction> function_;
  std::vector<std::vector<double>> given_;  // kept while one may come again
  int count_ = 0;
  Worst worst_;
};

}  // namespace

std::unique_ptr<AbstractPlugin> pool() { return std::make_unique<Pool>(); }

}  // namespace brel::plugin
