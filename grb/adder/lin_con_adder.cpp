#include "grb/adder/lin_con_adder.h"

#include <span>
#include <vector>

#include "grb/adder/block_reading.h"
#include "grb/adder/domain_types.h"
#include "grb/adder/linear_functions.h"
#include "tav/opt/quantities.h"
#include "tav/opt/tags.h"

namespace grb {
namespace {

using tav::opt::RowQuantity;

void sendRows(Data& data, const LinearFunctions& functions, const BlockNames& names, std::span<const char> senses) {
  GurobiModel& model = *data.model;
  functions.forEach([&](int i, const LinearTerms& terms) {
    const auto k = static_cast<std::size_t>(i);
    model.addConstr(terms.positions, terms.coefficients, senses[k], -terms.constant, names.at(i));
    data.linearRows.add();
  });
}

// What the framework may ask of the rows later.
void noteSides(RowStores& stores, const LinearFunctions& functions, std::span<const char> senses) {
  stores.senses.insert(stores.senses.end(), senses.begin(), senses.end());
  stores.sides.reserve(stores.sides.size() + senses.size());
  functions.forEach([&](int, const LinearTerms& terms) { stores.sides.push_back(-terms.constant); });
}

}  // namespace

tav::idx::List LinConAdder::add(const tav::opt::ConstraintContainer& block) {
  const auto data = openRecord(record());
  const auto standard = block.group(tav::opt::tag::kConstraint);
  const auto own = block.group(kOwnGroup);
  const int count = elementCount(standard);
  if (count <= 0) return {};
  const auto senses = readTypes<constrTypeToGurobi>(standard.get(RowQuantity::type), count);
  const LinearFunctions functions(standard.get(RowQuantity::function), count, *data);
  requireCounts(standard, count);
  requireCounts(own, count);
  const BlockNames names(*data, standard.get(RowQuantity::name));

  LockedModel locked(*data);
  GurobiModel& model = *data->model;
  RowStores& stores = *data->rowStores;
  noteSides(stores, functions, senses);
  const tav::idx::List positions = tav::idx::lib::Range(data->linearRows.count(), count);
  locked.add([&](GurobiModel&) { sendRows(*data, functions, names, senses); });

  copyToStore(standard.get(RowQuantity::marginal), positions, stores.marginal);
  copyToStore(standard.get(RowQuantity::basis), positions, stores.basis);
  copyToStore(own.get(kPreference), positions, stores.preference);
  const auto lazy = readGiven<int>(own.get(kLazy), 0);
  if (!lazy.empty()) model.setIntAttrArray("Lazy", positions, lazy);
  return positions;
}

}  // namespace grb
