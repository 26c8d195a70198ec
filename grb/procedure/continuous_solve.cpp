#include "grb/procedure/continuous_solve.h"

#include <fmt/format.h>

#include "grb/gurobi/constants.h"
#include "grb/procedure/warm_start.h"

namespace grb {
namespace {

constexpr int kSmall = 300;  // variables and rows of a model that is solved again unasked

bool mayRerun(Data& data) {
  if (data.options.isSetTo(IntOption::rerun, 1)) return true;
  return data.model->getIntAttr("NumVars") <= kSmall && data.model->getIntAttr("NumConstrs") <= kSmall;
}

int rerun(Data& data) {
  GurobiModel& model = *data.model;
  data.callbacks.log->writeLine("Resolving with presolve turned off.");
  data.beforeProcedure.emplace("presolve", model.getIntParam("Presolve"));
  model.setIntParam("Presolve", 0);
  model.optimize();
  return model.getIntAttr("Status");
}

std::optional<double> reported(Data& data, const char* attribute, const char* label) {
  if (!data.model->isAttrAvailable(attribute)) {
    data.callbacks.log->writeLine(fmt::format("{} not available.", label));
    return std::nullopt;
  }
  const double value = data.model->getDblAttr(attribute);
  data.callbacks.log->writeLine(fmt::format("{} = {:f}", label, value));
  return value;
}

}  // namespace

void solveContinuous(Data& data) {
  GurobiModel& model = *data.model;
  tav::opt::AbstractLog& log = *data.callbacks.log;
  if (model.getIntAttr("NumQNZs") + model.getIntAttr("NumQCNZs") < 1) registerBasisAndPoint(data);
  model.optimize();
  int status = model.getIntAttr("Status");
  if (status == status::kInfOrUnbd && mayRerun(data)) status = rerun(data);
  if (status == status::kInfOrUnbd) {
    log.writeLine("Gurobi reports the model to be either infeasible or unbounded.");
    log.writeLine("Use option 'rerun 1' or 'dualreductions 0' in a KAVO/Gurobi");
    log.writeLine("option file to determine the primal solution status.");
  }
  if (data.options.isSetTo(IntOption::kappaexact, 1)) {
    data.outcome.exactCondition = reported(data, "KappaExact", "Exact condition number of the scaled basis matrix");
  }
  if (data.options.isSetTo(IntOption::kappa, 1)) {
    data.outcome.condition = reported(data, "Kappa", "Approximate condition number of the scaled basis matrix");
  }
}

}  // namespace grb
