#include "grb/adder/sos_adder.h"

#include <fmt/core.h>

#include <array>

#include "grb/adder/block_reading.h"
#include "grb/adder/domain_types.h"
#include "grb/adder/linear_functions.h"
#include "grb/adder/set_weights.h"
#include "tav/opt/quantities.h"
#include "tav/opt/tags.h"

namespace grb {
namespace {

using tav::opt::RowQuantity;

// Gurobi refuses a set that names a variable twice.
void requireDifferentMembers(const LinearFunctions& functions) {
  std::vector<int> sorted;
  functions.forEach([&sorted](int i, const LinearTerms& members) {
    if (const int* twice = repeatedValue(members.positions, sorted)) {
      failElement(i, fmt::format("variable {} is in the set more than once", *twice));
    }
  });
}

}  // namespace

tav::idx::List SOSAdder::add(const tav::opt::ConstraintContainer& block) {
  const auto data = openRecord(record());
  const auto standard = block.group(tav::opt::tag::kConstraint);
  const int count = elementCount(standard);
  if (count <= 0) return {};
  const auto types = readTypes<sosTypeToGurobi>(standard.get(RowQuantity::type), count);
  const LinearFunctions functions(standard.get(RowQuantity::function), count, *data);
  requireCounts(standard, count);
  requireDifferentMembers(functions);
  const SetWeights weights(standard.get(RowQuantity::weights), functions, types);

  LockedModel locked(*data);
  const tav::idx::List positions = tav::idx::lib::Range(data->sosSets.count(), count);
  locked.add([&](GurobiModel& model) {
    functions.forEach([&](int i, const LinearTerms& members) {
      constexpr std::array kBegin{0};
      model.addSos(std::span(types).subspan(static_cast<std::size_t>(i), 1), kBegin, members.positions, weights.of(i));
      data->sosSets.add();
    });
  });
  return positions;
}

}  // namespace grb
