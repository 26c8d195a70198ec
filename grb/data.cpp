#include "grb/data.h"

#include <fmt/core.h>

#include "grb/gurobi/exception.h"

namespace grb {

Data::Data(std::shared_ptr<const Library> library)
    : model(std::make_shared<GurobiModel>(std::move(library))), rowStores(std::make_shared<RowStores>()) {}

// Gurobi may log while it frees a model, to the log that stands behind it in the record.
Data::~Data() { model.reset(); }

bool Data::hasObjective() const {
  return linearObjectives.count() > 0 || quadraticObjectives.count() > 0 || nonlinearObjectives.count() > 0;
}

void Data::requireInStep() {
  if (!lost_.empty()) throw tav::Exception(lost_);
  const int held = model->getIntAttr("NumVars");
  if (held == variables.count()) return;
  throw tav::Exception(
      fmt::format("The Gurobi model holds {} variables where {} were added; the model cannot be loaded "
                  "further.",
                  held, variables.count()));
}

bool Data::holdsAll() const {
  const auto holds = [this](const char* count, int registered) { return model->getIntAttr(count) == registered; };
  return holds("NumVars", variables.count()) && holds("NumConstrs", linearRows.count()) &&
         holds("NumQConstrs", quadraticRows.count()) && holds("NumSOS", sosSets.count()) &&
         holds("NumGenConstrs", static_cast<int>(generalConstraints.size()));
}

bool Data::isInStepAfterError() {
  if (!lost_.empty()) return false;
  rowStores->resize(static_cast<std::size_t>(linearRows.count()));
  try {
    if (holdsAll()) return true;
  } catch (const GurobiException&) {
    // a model whose counts cannot be read is no better than one whose counts are wrong
  }
  lost_ = "Gurobi discarded parts of the model when an earlier call failed; the model must be loaded anew.";
  return false;
}

int Data::registerRow(char sense, double side) {
  rowStores->senses.push_back(sense);
  rowStores->sides.push_back(side);
  return linearRows.add();
}

void Data::forgetStarts() {
  variableStores.level.reset();
  variableStores.basis.reset();
  rowStores->marginal.reset();
  rowStores->basis.reset();
  mipStarts->reset();
}

void Data::clear() {
  for (Registry* registry : {&variables, &linearRows, &quadraticRows, &sosSets, &indicators, &nonlinearRows,
                             &linearObjectives, &quadraticObjectives, &nonlinearObjectives}) {
    registry->clear();
  }
  generalConstraints.clear();
  variableStores = {};
  rowStores = std::make_shared<RowStores>();
  mipStarts = std::make_shared<MipStarts>();
  pendingCoefficients.clear();
  pendingObjective.clear();
  pendingSides.clear();
  outcome = {};
  lost_.clear();
}

}  // namespace grb
