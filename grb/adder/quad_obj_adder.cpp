#include "grb/adder/quad_obj_adder.h"

#include "grb/adder/block_reading.h"
#include "grb/adder/domain_types.h"
#include "grb/adder/objective_terms.h"
#include "grb/adder/quadratic_functions.h"
#include "tav/opt/quantities.h"
#include "tav/opt/tags.h"

namespace grb {

using tav::opt::ObjectiveQuantity;

tav::idx::List QuadObjAdder::add(const tav::opt::ConstraintContainer& block) {
  const auto data = openRecord(record());
  const auto standard = block.group(tav::opt::tag::kConstraint);
  const int count = elementCount(standard);
  if (count <= 0) return {};
  if (data->hasObjective() || count > 1) refuseMultipleObjectives();
  const auto senses = readTypes<objTypeToGurobi>(standard.get(ObjectiveQuantity::sense), count);
  const QuadraticFunctions functions(standard.get(ObjectiveQuantity::function), count, *data);

  LockedModel locked(*data);
  tav::idx::List positions;
  locked.add([&](GurobiModel& model) {
    model.setIntAttr("ModelSense", senses.front());
    functions.forEach([&](int, const tav::math::QuadraticFunction<double>& function) {
      const auto& linear = function.linear;
      model.addQpTerms(function.first, function.second, function.values);
      positions = data->quadraticObjectives.add(1);
      writeCoefficients(model, "Obj", {linear.positions, linear.coefficients, linear.constant});
      model.setDblAttr("ObjCon", linear.constant);
    });
  });
  return positions;
}

}  // namespace grb
