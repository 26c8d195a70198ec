#include "brel/result/write_back.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <span>

#include "brel/host.h"
#include "brel/result/absence.h"
#include "brel/result/conflict.h"
#include "brel/result/objective_difference.h"
#include "brel/result/reader.h"
#include "brel/result/settle.h"
#include "brel/result/violations.h"
#include "brel/rewrite/objective_function.h"
#include "brel/rewrite/sides.h"
#include "tav/opt/quantities.h"
#include "tav/opt/solver_services.h"

namespace brel::result {
namespace {

constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

void note(trpRec* host, const std::string& line) { kavo_link_note(host, line.c_str()); }

// What was solved is another model than the user's: only the point is his, and what his own functions are there.
void tellRelaxation(const load::TranslatedModel& model, const Reader& reader, bool isCutShort, kavo_finish& finish) {
  trpRec* host = model.user.host;
  finish.objective = finish.bound = finish.gap = kUnknown;
  if (isInfeasible(finish.status)) {
    note(host,
         "there is no feasible relaxation: it is not enough that bounds and linear rows give way as far as they may");
  } else if (finish.solutions > 0) {
    note(host, fmt::format("the values are those of a feasible relaxation, whose cost is {:.10g}", finish.relaxation));
  } else if (finish.status != KAVO_UNBOUNDED) {
    note(host, "the feasible relaxation has given no point");
  }
  if (reader.point() == nullptr) return;
  if (isCutShort) {
    note(host,
         "the search for the cheapest relaxation was cut short: the one given may cost more than it must, and the "
         "objective was not looked at");
  }
  if (!model.user.objective) {
    finish.objective = 0;
  } else {
    finish.objective = rewrite::ObjectiveFunction(model.user, *model.user.objective).at(reader.point()->point());
  }
}

// The value of every objective of the model at the point. Borrowed from the host.
std::span<const double> giveObjectives(const UserModel& user, std::span<const double> point) {
  double* values = nullptr;
  std::size_t count = 0;
  checkHost(kavo_link_objective_values(user.host, &values, &count));
  for (std::size_t k = 0; k < count; ++k) {
    kavo_objective objective{};
    checkHost(kavo_link_objective(user.host, k, &objective));
    values[k] = rewrite::ObjectiveFunction(user, objective).at(point);
  }
  return {values, count};
}

bool hasOneObjective(tav::opt::AbstractSolver& solver, const load::TranslatedModel& model) {
  const auto sent = solver.makeConstraintContainers(model.objectiveAdder, std::nullopt, {}).first;
  return sent.get(tav::opt::ObjectiveQuantity::value).as<double>().size() == 1;
}

void tellDifference(const UserModel& user, std::span<const double> own, double solvers) {
  int number = 0;
  checkHost(kavo_link_objective_number(user.host, &number));
  if (number < 1) return;
  const double value = own[static_cast<std::size_t>(number) - 1];
  if (!isObjectiveOff(value, solvers)) return;
  note(user.host,
       fmt::format(
           "the objective by the model's own functions is {:.12g} at the returned point; the solver's is {:.12g}",
           value, solvers));
}

}  // namespace

void tellPoint(const UserModel& user, const rewrite::UserPoint& point) {
  checkPoint(user, point);
  giveObjectives(user, point.point());
}

kavo_finish writeBack(trpRec* host, tav::opt::AbstractSolver& solver, const load::TranslatedModel& model) {
  const auto* services = dynamic_cast<const tav::opt::AbstractSolverServices*>(&solver);
  const bool isRelaxed = services != nullptr && !services->structureIntact();
  Reader reader(host, solver, model);
  kavo_finish finish = reader.facts();
  settle(reader, host, solver, finish);
  const bool hasPoint = finish.solutions > 0;
  // A search for a conflict that found none leaves a basis of its own behind.
  const bool isOverwritten = services != nullptr && !services->conflictFailure().empty();
  if (hasPoint || !(isRelaxed || isOverwritten)) {
    reader.read(isRelaxed ? Extent::point : hasPoint ? Extent::all : Extent::basis);
  }
  if (isRelaxed) tellRelaxation(model, reader, services->isRelaxationCutShort(), finish);
  if (services != nullptr && !isRelaxed && finish.stop != KAVO_STOP_CUTOFF) {
    if (const auto conflict = services->conflict()) giveConflict(model, *conflict);
  }
  if (reader.point() == nullptr) return finish;
  const bool isOneObjective = hasOneObjective(solver, model);
  // Of a search nobody expects duals; the plug-ins that were to give them say why there are none.
  if (!isRelaxed && !reader.hasDuals() && model.user.columns.count > 0 && discreteParts(model).empty()) {
    note(host, "no duals: " + (isOneObjective ? whyNoDuals(model, services) : "several objectives"));
  }
  checkPoint(model.user, *reader.point());
  const auto objectives = giveObjectives(model.user, reader.point()->point());
  if (!isRelaxed && isOneObjective) tellDifference(model.user, objectives, finish.objective);
  return finish;
}

}  // namespace brel::result
