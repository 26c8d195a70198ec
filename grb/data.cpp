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

void Data::settleAfterError(int rows) {
  const int sent = linearRows.count() + rows;
  rowStores->resize(static_cast<std::size_t>(sent));
  try {
    if (model->getIntAttr("NumVars") == variables.count() && model->getIntAttr("NumConstrs") == sent) {
      linearRows.add(rows);
      return;
    }
  } catch (const GurobiException&) {
    // a model whose counts cannot be read is no better than one whose counts are wrong
  }
  lost_ = "Gurobi discarded parts of the model when an earlier call failed; the model must be loaded anew.";
}

void Data::clear() {
  for (Registry* registry : {&variables, &linearRows, &quadraticRows, &sosSets, &indicators, &nonlinearRows,
                             &linearObjectives, &quadraticObjectives, &nonlinearObjectives}) {
    registry->clear();
  }
  variableStores = {};
  rowStores = std::make_shared<RowStores>();
  lost_.clear();
}

}  // namespace grb
