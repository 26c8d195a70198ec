#include "grb/nonlinear/nonlin_obj_adder.h"

#include "grb/adder/block_reading.h"
#include "grb/adder/domain_types.h"
#include "grb/adder/objective_terms.h"
#include "grb/nonlinear/counted_adds.h"
#include "grb/nonlinear/nonlinear_stack.h"
#include "grb/nonlinear/split.h"
#include "tav/opt/quantities.h"
#include "tav/opt/tags.h"

namespace grb {

using tav::opt::ObjectiveQuantity;

tav::idx::List NonlinObjAdder::add(const tav::opt::ConstraintContainer& block) {
  const auto data = openRecord(record());
  const auto standard = block.group(tav::opt::tag::kConstraint);
  const int count = elementCount(standard);
  if (count <= 0) return {};
  if (data->hasObjective() || count > 1) refuseMultipleObjectives();
  requireCounts(standard, count);
  const auto senses = readTypes<objTypeToGurobi>(standard.get(ObjectiveQuantity::sense), count);
  const auto function = standard.get(ObjectiveQuantity::function).as<tav::math::Symbol<double>>().get(0);
  const SplitFunction parts = split(function, *data);
  NonlinearStack tree = NonlinearStack::encodeSum(parts.remainder, *data);

  LockedModel locked(*data);
  locked.add([&](GurobiModel& model) {
    tree.addAuxiliaries(*data);
    model.setIntAttr("ModelSense", senses.front());
    writeCoefficients(model, "Obj", parts.linear());
    model.setDblAttr("ObjCon", parts.constant);
    const int result = addFreeVariable(*data, std::nullopt, 1);
    addTree(*data, tree, {GeneralConstraint::Kind::nonlinearObjective, 0}, result, nullptr);
  });
  return data->nonlinearObjectives.add(1);
}

}  // namespace grb
