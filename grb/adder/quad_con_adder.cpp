#include "grb/adder/quad_con_adder.h"

#include "grb/adder/block_reading.h"
#include "grb/adder/domain_types.h"
#include "grb/adder/quadratic_functions.h"
#include "tav/opt/quantities.h"
#include "tav/opt/tags.h"

namespace grb {

using tav::opt::RowQuantity;

tav::idx::List QuadConAdder::add(const tav::opt::ConstraintContainer& block) {
  const auto data = openRecord(record());
  const auto standard = block.group(tav::opt::tag::kConstraint);
  const int count = elementCount(standard);
  if (count <= 0) return {};
  const auto senses = readTypes<constrTypeToGurobi>(standard.get(RowQuantity::type), count);
  const QuadraticFunctions functions(standard.get(RowQuantity::function), count, *data);
  requireCounts(standard, count);
  const BlockNames names(*data, standard.get(RowQuantity::name));

  LockedModel locked(*data);
  const tav::idx::List positions = tav::idx::lib::Range(data->quadraticRows.count(), count);
  locked.add([&](GurobiModel& model) {
    functions.forEach([&](int i, const tav::math::QuadraticFunction<double>& function) {
      const auto& linear = function.linear;
      model.addQConstr(linear.positions, linear.coefficients, function.first, function.second, function.values,
                       senses[static_cast<std::size_t>(i)], -linear.constant, names.at(i));
      data->quadraticRows.add();
    });
  });
  return positions;
}

}  // namespace grb
