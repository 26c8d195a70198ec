#include "grb/result/var_domain.h"

#include <array>

#include "grb/gurobi/callback_constants.h"
#include "grb/result/attribute_container.h"
#include "grb/result/parameter_aside.h"
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

// Runs a read of the attribute that holds a point: "X" of the best one; another is chosen by a parameter and is "Xn".
template <class Read>
auto readPoint(GurobiModel& model, int solution, const Read& read) {
  if (solution == 0) return read("X");
  const ParameterAside chosen(model, "SolutionNumber", solution);
  return read("Xn");
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
  if (!model) return 0;
  return readPoint(*model, solution, [&](const char* name) { return model->getDblAttrElement(name, index); });
}

void VarPrimalSolutions::get(const tav::idx::List& list, std::span<double> values, int solution) const {
  const auto model = model_.lock();
  if (!model || list.size() == 0) return;
  readPoint(*model, solution, [&](const char* name) { readElements<double>(*model, name, list, values); });
}

}  // namespace grb
