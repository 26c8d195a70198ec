#include "grb/procedure/relaxation.h"

#include <fmt/format.h>

#include <cmath>
#include <vector>

#include "grb/gurobi/constants.h"
#include "grb/result/solution_status.h"
#include "tav/idx/lib/range.h"

namespace grb {
namespace {

constexpr int kObjectives[] = {relaxobj::kLinear, relaxobj::kCardinality, relaxobj::kQuadratic};

double penalty(double preference) {
  if (std::isnan(preference)) return 1;  // none was given
  return preference > 0 ? 1 / preference : kInfinity;
}

std::vector<double> penalties(const tav::attr::Container<double>& preferences, int count) {
  std::vector<double> values = preferences.getValues(tav::idx::lib::Range(0, count));
  for (double& value : values) value = penalty(value);
  return values;
}

}  // namespace

void solveRelaxation(Data& data) {
  tav::opt::AbstractLog& log = *data.callbacks.log;
  log.writeLine("Computing feasible relaxation");
  const std::vector<double> ofBounds = penalties(data.variableStores.preference, data.variables.count());
  const std::vector<double> ofRows = penalties(data.rowStores->preference, data.linearRows.count());
  const int mode = data.options.value(IntOption::feasoptmode);
  const bool isCheapest = mode % 2 == 1;
  const double value = data.model->feasRelax(kObjectives[mode / 2], mode % 2, ofBounds, ofBounds, ofRows);
  if (isCheapest) log.writeLine(fmt::format("Value of minimum cost relaxation: {:f}", value));
  // A negative value says that what may give way is not enough, or that the search for the cheapest way was stopped;
  // the model's objective is the cost then, too.
  if (isCheapest && value >= 0) data.outcome.relaxation = value;
  data.outcome.relaxationIsObjective = !isCheapest || value < 0;
  data.outcome.isRelaxationCutShort = isCheapest && value < 0;
  data.model->optimize();
}

tav::opt::StopReason stopOfRelaxation(Data& data, int status) {
  const tav::opt::SolutionStatus known = solutionStatus(status);
  const bool isWhole = known == tav::opt::SolutionStatus::optimal || known == tav::opt::SolutionStatus::locallyOptimal;
  if (!isWhole) return stopReason(status);
  if (data.isInterrupted) return tav::opt::StopReason::interrupted;
  // The second search is like the first and meets the same limits, but for that of time.
  return data.model->getDblParam("TimeLimit") < kInfinity ? tav::opt::StopReason::time : stopReason(status);
}

}  // namespace grb
