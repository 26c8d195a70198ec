#include "grb/result/var_domain.h"

#include <array>

#include "grb/gurobi/callback_constants.h"
#include "grb/result/attribute_container.h"
#include "grb/result/sources.h"
#include "grb/result/transforms.h"
#include "tav/attr/view/transform_container.h"
#include "tav/opt/quantities.h"

namespace grb {
namespace {

using Q = tav::opt::VariableQuantity;

constexpr std::array kOfModel{
    Quantity{Q::lower, "lower"},
    Quantity{Q::upper, "upper"},
    Quantity{Q::priority, "priority"},
    Quantity{Q::starts, "start"},
    Quantity{Q::level, "level"},
    Quantity{Q::reducedCost, "reduced cost"},
    Quantity{Q::basis, "basis status"},
    Quantity{Q::lowerRangeLow, "lower bound from"},
    Quantity{Q::lowerRangeHigh, "lower bound to"},
    Quantity{Q::upperRangeLow, "upper bound from"},
    Quantity{Q::upperRangeHigh, "upper bound to"},
};
constexpr std::array kOfIncumbent{Quantity{Q::level, "level"}};

const char* attributeOf(int key) {
  switch (key) {
    case Q::lower:
      return "LB";
    case Q::upper:
      return "UB";
    case Q::reducedCost:
      return "RC";
    case Q::lowerRangeLow:
      return "SALBLow";
    case Q::lowerRangeHigh:
      return "SALBUp";
    case Q::upperRangeLow:
      return "SAUBLow";
    default:
      return "SAUBUp";
  }
}

// "X" of the best point; another point is chosen by a parameter and read as "Xn".
const char* selectPoint(GurobiModel& model, int solution) {
  if (solution == 0) return "X";
  model.setIntParam("SolutionNumber", solution);
  return "Xn";
}

}  // namespace

VarDomain::VarDomain(const Data& data, std::optional<Event> event)
    : model_(data.model),
      priority_(data.variableStores.priority),
      starts_(data.mipStarts),
      source_(callbackSource(data)),
      event_(event) {}

std::span<const Quantity> VarDomain::provided() const {
  if (event_ == Event::none) return kOfModel;
  if (event_ == Event::incumbent) return kOfIncumbent;
  return {};
}

tav::attr::BaseContainer VarDomain::make(int key) const {
  if (event_ == Event::incumbent) {
    return std::make_shared<CallbackDoubleAttributeContainer>(source_, where::kMipSol, what::kMipSolSol);
  }
  switch (key) {
    case Q::priority:
      return priority_;
    case Q::starts:
      return starts_;
    case Q::level:
      return transformed<transform::DoubleValues>(std::make_shared<VarPrimalSolutions>(model_));
    case Q::basis:
      return transformed<transform::Basis>(
          std::make_shared<IntAttributeContainer>(model_, "VBasis", "NumVars", Access::readOnly));
    default:
      return transformed<transform::DoubleValues>(std::make_shared<DoubleAttributeContainer>(
          model_, attributeOf(key), "NumVars", key <= Q::upper ? Access::readWrite : Access::readOnly));
  }
}

int VarPrimalSolutions::size() const {
  const auto model = model_.lock();
  return model ? model->getIntAttr("NumVars") : 0;
}

int VarPrimalSolutions::solutionCount() const {
  const auto model = model_.lock();
  return model ? model->getIntAttr("SolCount") : 0;
}

double VarPrimalSolutions::get(int index, int solution) const {
  const auto model = model_.lock();
  return model ? model->getDblAttrElement(selectPoint(*model, solution), index) : 0;
}

void VarPrimalSolutions::get(const tav::idx::List& list, std::span<double> values, int solution) const {
  const auto model = model_.lock();
  if (model && list.size() > 0) readElements<double>(*model, selectPoint(*model, solution), list, values);
}

}  // namespace grb
