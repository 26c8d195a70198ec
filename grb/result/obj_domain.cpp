#include "grb/result/obj_domain.h"

#include <array>

#include "grb/gurobi/callback_constants.h"
#include "grb/result/attrib.h"
#include "grb/result/attribute_container.h"
#include "grb/result/parameter_aside.h"
#include "grb/result/sources.h"
#include "grb/result/transforms.h"
#include "tav/attr/view/single_item_container.h"
#include "tav/idx/lib/range.h"
#include "tav/idx/visit.h"
#include "tav/opt/quantities.h"

namespace grb {
namespace {

using Q = tav::opt::ObjectiveQuantity;

constexpr std::array kOfModel{Quantity{Q::value, "value"}, Quantity{Q::bound, "bound"},
                              Quantity{Q::coefficientRangeLow, "coefficient from"},
                              Quantity{Q::coefficientRangeHigh, "coefficient to"}};
constexpr std::array kOfEvent{Quantity{Q::value, "value"}, Quantity{Q::bound, "bound"}};
constexpr std::array kOfFunction{Quantity{tav::opt::FunctionQuantity::constant, "constant"},
                                 Quantity{tav::opt::FunctionQuantity::coefficients, "coefficients"}};

using SingleItem = tav::attr::view::SingleItemContainer<tav::attr::Item<double>>;

// A number of the model as a container of one element, which leaves lists as they are once the model is gone.
class ModelNumber final : public SingleItem {
 public:
  ModelNumber(std::weak_ptr<GurobiModel> model, tav::attr::Item<double> number)
      : SingleItem(std::move(number)), model_(std::move(model)) {}

  using SingleItem::get;
  void get(const tav::idx::List& list, std::span<double> values, int solution) const override {
    if (!model_.expired()) SingleItem::get(list, values, solution);
  }

 private:
  std::weak_ptr<GurobiModel> model_;
};

int whatCode(Event event, int key) {
  if (event == Event::node) return key == Q::value ? what::kMipNodeObjBst : what::kMipNodeObjBnd;
  return key == Q::value ? what::kMipSolObjBst : what::kMipSolObjBnd;
}

}  // namespace

ObjDomain::ObjDomain(const Data& data, std::optional<Event> event)
    : model_(data.model),
      source_(callbackSource(data)),
      mode_(data.linearObjectives.count() > 1 ? kMultiObjectiveMode : kSingleObjectiveMode),
      event_(event) {}

std::span<const Quantity> ObjDomain::provided() const {
  if (event_ == Event::none) return kOfModel;
  return event_ ? std::span<const Quantity>(kOfEvent) : std::span<const Quantity>();
}

tav::attr::BaseContainer ObjDomain::make(int key) const {
  if (*event_ != Event::none) {
    const int where = *event_ == Event::node ? where::kMipNode : where::kMipSol;
    const auto best = std::make_shared<CallbackAttrib<double>>(source_, where, whatCode(*event_, key));
    return std::make_shared<SingleItem>(transformed<transform::DoubleValues>(best).as<double>());
  }
  if (key == Q::value) {
    return transformed<transform::DoubleValues>(std::make_shared<ObjPrimalSolutions>(model_, mode_));
  }
  if (key == Q::coefficientRangeLow || key == Q::coefficientRangeHigh) {
    const char* attribute = key == Q::coefficientRangeLow ? "SAObjLow" : "SAObjUp";
    return transformed<transform::DoubleValues>(
        std::make_shared<DoubleAttributeContainer>(model_, attribute, "NumVars", Access::readOnly));
  }
  const auto bound = std::make_shared<Attrib<kModelAttribute, double>>(model_, "ObjBound");
  return std::make_shared<ModelNumber>(model_, transformed<transform::DoubleValues>(bound).as<double>());
}

int ObjPrimalSolutions::size() const {
  const auto model = model_.lock();
  return model ? model->getIntAttr("NumObj") : 0;
}

int ObjPrimalSolutions::solutionCount() const {
  const auto model = model_.lock();
  return model && model->isAttrAvailable("ObjVal") ? model->getIntAttr("SolCount") : 0;
}

double ObjPrimalSolutions::get(int index, int solution) const {
  const auto model = model_.lock();
  if (!model) return 0;
  if (mode_ == kMultiObjectiveMode && model->getIntAttr("NumObj") > 1) {
    const ParameterAside objective(*model, "ObjNumber", index);
    const ParameterAside point(*model, "SolutionNumber", solution);
    return model->getDblAttr("ObjNVal");
  }
  if (solution == 0) return model->getDblAttr("ObjVal");
  const ParameterAside point(*model, "SolutionNumber", solution);
  return model->getDblAttr("PoolNObjVal");
}

void ObjPrimalSolutions::get(const tav::idx::List& list, std::span<double> values, int solution) const {
  if (model_.expired()) return;
  tav::idx::visit(list, [&](int k, int index) { values[static_cast<std::size_t>(k)] = get(index, solution); });
}

int LinObjSenseLinearTerms::size() const {
  const auto model = model_.lock();
  return model ? model->getIntAttr("NumVars") : 0;
}

int LinObjSenseLinearTerms::solutionCount() const {
  const auto model = model_.lock();
  return model ? model->getIntAttr("NumObj") : 0;
}

double LinObjSenseLinearTerms::get(int index, int solution) const {
  double value = 0;
  get(tav::idx::lib::Range(index, 1), std::span<double>(&value, 1), solution);
  return value;
}

// The first objective, or the only one, is "Obj" in any case.
void LinObjSenseLinearTerms::get(const tav::idx::List& list, std::span<double> values, int solution) const {
  const auto model = model_.lock();
  if (!model) return;
  if (solution == 0) return readElements<double>(*model, "Obj", list, values);
  const ParameterAside objective(*model, "ObjNumber", solution);
  readElements<double>(*model, "ObjN", list, values);
}

LinObjFunction::LinObjFunction(const Data& data, std::optional<Event> event) : ModelView(data, event, kOfFunction) {}

tav::attr::BaseContainer LinObjFunction::make(int key) const {
  if (key == tav::opt::FunctionQuantity::coefficients) return std::make_shared<LinObjSenseLinearTerms>(model());
  return std::make_shared<ModelNumber>(model(), std::make_shared<Attrib<kModelAttribute, double>>(model(), "ObjCon"));
}

}  // namespace grb
