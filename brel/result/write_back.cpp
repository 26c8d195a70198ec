#include "brel/result/write_back.h"

#include <fmt/format.h>

#include <limits>

#include "brel/host.h"
#include "brel/result/absence.h"
#include "brel/result/conflict.h"
#include "brel/result/reader.h"
#include "brel/result/violations.h"
#include "brel/rewrite/objective_function.h"
#include "tav/opt/solver_services.h"

namespace brel::result {
namespace {

constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

void note(trpRec* host, const std::string& line) { kavo_link_note(host, line.c_str()); }

// What was solved is another model than the user's: only the point is his, and what his own functions are there.
void tellRelaxation(const load::TranslatedModel& model, const Reader& reader, kavo_finish& finish) {
  finish.bound = finish.gap = kUnknown;
  if (finish.status == KAVO_INFEASIBLE || finish.status == KAVO_LOCALLY_INFEASIBLE) {
    note(model.user.host, "there is no feasible relaxation: what may give way (feaspref) is not enough");
  } else if (finish.solutions == 0) {
    note(model.user.host, "the feasible relaxation has given no point");
  } else {
    note(model.user.host,
         fmt::format("the values are those of a feasible relaxation, whose cost is {:.10g}", finish.relaxation));
  }
  if (finish.status != KAVO_INFEASIBLE && finish.status != KAVO_LOCALLY_INFEASIBLE) finish.status = KAVO_UNKNOWN;
  finish.objective = kUnknown;
  if (reader.point() == nullptr || !model.user.objective) return;
  finish.objective = rewrite::ObjectiveFunction(model.user, *model.user.objective).at(reader.point()->point());
}

// The value of every objective of the model at the point.
void giveObjectives(const UserModel& user, std::span<const double> point) {
  double* values = nullptr;
  std::size_t count = 0;
  checkHost(kavo_link_objective_values(user.host, &values, &count));
  for (std::size_t k = 0; k < count; ++k) {
    kavo_objective objective{};
    checkHost(kavo_link_objective(user.host, k, &objective));
    values[k] = rewrite::ObjectiveFunction(user, objective).at(point);
  }
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
  const bool hasPoint = finish.solutions > 0;
  // A search for a conflict that found none leaves a basis of its own behind.
  const bool isOverwritten = services != nullptr && !services->conflictFailure().empty();
  if (hasPoint || !(isRelaxed || isOverwritten)) {
    reader.read(isRelaxed ? Extent::point : hasPoint ? Extent::all : Extent::basis);
  }
  if (isRelaxed) {
    finish.relaxation = services->relaxation().value_or(kUnknown);
    tellRelaxation(model, reader, finish);
  }
  if (services != nullptr) {
    if (const auto conflict = services->conflict()) giveConflict(model, *conflict);
  }
  if (reader.point() == nullptr) return finish;
  // Of a search nobody expects duals; the plug-ins that were to give them say why there are none.
  if (!isRelaxed && !reader.hasDuals() && discreteParts(model).empty()) {
    note(host, "no duals: " + whyNoDuals(model, services));
  }
  tellPoint(model.user, *reader.point());
  return finish;
}

}  // namespace brel::result
