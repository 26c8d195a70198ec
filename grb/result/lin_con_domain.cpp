#include "grb/result/lin_con_domain.h"

#include <array>
#include <limits>
#include <vector>

#include "grb/gurobi/constants.h"
#include "grb/result/attribute_container.h"
#include "grb/result/sources.h"
#include "grb/result/transforms.h"
#include "tav/attr/lib/list_container.h"
#include "tav/attr/transform.h"
#include "tav/opt/codes.h"
#include "tav/opt/quantities.h"

namespace grb {
namespace {

using Q = tav::opt::RowQuantity;
using transform::DoubleValues;

constexpr std::array kOfModel{
    Quantity{Q::lower, "lower"},           Quantity{Q::upper, "upper"},        Quantity{Q::slack, "slack"},
    Quantity{Q::marginal, "marginal"},     Quantity{Q::basis, "basis status"}, Quantity{Q::sideRangeLow, "side from"},
    Quantity{Q::sideRangeHigh, "side to"},
};
constexpr std::array kOfFunction{Quantity{tav::opt::FunctionQuantity::constant, "constant"}};

std::shared_ptr<DoubleAttributeContainer> rowValues(const std::weak_ptr<GurobiModel>& model, const char* attribute) {
  return std::make_shared<DoubleAttributeContainer>(model, attribute, "NumConstrs", Access::readOnly);
}

int rowBasis(int status, char rowSense) {
  using tav::opt::BasisStatus;
  switch (status) {
    case basis::kBasic:
      return static_cast<int>(BasisStatus::basic);
    case basis::kNonbasicLower:
      return static_cast<int>(rowSense == sense::kLessEqual ? BasisStatus::upper : BasisStatus::lower);
    case basis::kNonbasicUpper:
      return static_cast<int>(BasisStatus::upper);
    case ElementAccess<int>::kUnread:
      return status;
    default:
      return static_cast<int>(BasisStatus::superbasic);
  }
}

constexpr double kNoSide = std::numeric_limits<double>::infinity();

// One side of every row; rows of the sense `without` have none.
tav::attr::BaseContainer rowSides(const RowStores& rows, char without, double none) {
  std::vector<double> sides = rows.sides;
  for (std::size_t i = 0; i < sides.size(); ++i) {
    if (rows.senses[i] == without) sides[i] = none;
  }
  return std::make_shared<tav::attr::lib::ListContainer<double, std::vector>>(std::move(sides));
}

}  // namespace

LinConDomain::LinConDomain(const Data& data, std::optional<Event> event)
    : ModelView(data, event, kOfModel), rows_(data.rowStores) {}

tav::attr::BaseContainer LinConDomain::make(int key) const {
  switch (key) {
    case Q::lower:
      return rowSides(*rows_, 'L', -kNoSide);
    case Q::upper:
      return rowSides(*rows_, 'G', kNoSide);
    case Q::slack:
      return transformed<tav::attr::transform::Negate>(rowValues(model(), "Slack"));
    case Q::marginal:
      return transformed<transform::DoubleValues>(rowValues(model(), "Pi"));
    case Q::basis:
      return std::make_shared<LinConBasisSolutions>(model());
    default:
      return std::make_shared<LinConSensBounds>(model(), key == Q::sideRangeLow ? "SARHSLow" : "SARHSUp");
  }
}

LinConFunction::LinConFunction(const Data& data, std::optional<Event> event) : ModelView(data, event, kOfFunction) {}

tav::attr::BaseContainer LinConFunction::make(int /*key*/) const {
  return transformed<tav::attr::transform::Negate>(rowValues(model(), "RHS"));
}

int LinConBasisSolutions::size() const {
  const auto model = model_.lock();
  return model ? model->getIntAttr("NumConstrs") : 0;
}

int LinConBasisSolutions::solutionCount() const {
  const auto model = model_.lock();
  return model && model->isAttrAvailable("CBasis") && model->isAttrAvailable("Sense") ? 1 : 0;
}

int LinConBasisSolutions::get(int index, int /*solution*/) const {
  const auto model = model_.lock();
  if (!model) return 0;
  return rowBasis(model->getIntAttrElement("CBasis", index), model->getCharAttrElement("Sense", index));
}

void LinConBasisSolutions::get(const tav::idx::List& list, std::span<int> values, int /*solution*/) const {
  const auto model = model_.lock();
  if (!model || list.size() == 0) return;
  const auto wanted = values.first(static_cast<std::size_t>(list.size()));
  readElements<int>(*model, "CBasis", list, wanted);
  std::vector<char> senses(wanted.size(), '\0');
  model->getCharAttrArray("Sense", list, senses);
  if (senses.front() == '\0') failUnread("Sense");
  for (std::size_t k = 0; k < wanted.size(); ++k) wanted[k] = rowBasis(wanted[k], senses[k]);
}

int LinConSensBounds::size() const {
  const auto model = model_.lock();
  return model ? model->getIntAttr("NumConstrs") : 0;
}

int LinConSensBounds::solutionCount() const {
  const auto model = model_.lock();
  return model && model->isAttrAvailable(attribute_) ? 1 : 0;
}

double LinConSensBounds::get(int index, int /*solution*/) const {
  const auto model = model_.lock();
  if (!model) return 0;
  return DoubleValues::read(model->getDblAttrElement(attribute_, index)) - model->getDblAttrElement("RHS", index);
}

void LinConSensBounds::get(const tav::idx::List& list, std::span<double> values, int /*solution*/) const {
  const auto model = model_.lock();
  if (!model || list.size() == 0) return;
  const auto wanted = values.first(static_cast<std::size_t>(list.size()));
  readElements<double>(*model, attribute_, list, wanted);
  std::vector<double> sides(wanted.size());
  readElements<double>(*model, "RHS", list, sides);
  for (std::size_t k = 0; k < wanted.size(); ++k) wanted[k] = DoubleValues::read(wanted[k]) - sides[k];
}

}  // namespace grb
