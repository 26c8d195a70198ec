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

std::vector<char> readSenses(const tav::attr::Container<int>& types) {
  std::vector<char> senses(static_cast<std::size_t>(types.size()));
  forEachValue<int>(types, types.size(),
                    [&](int i, int type) { senses[static_cast<std::size_t>(i)] = constrTypeToGurobi(type); });
  return senses;
}

// Gurobi reads the terms where they stand; it copies them and changes nothing.
void sendRows(GurobiModel& model, const SymbolContainer& functions, std::span<const char* const> names,
              std::span<const char> senses, RowStores& stores) {
  forEachFunction(functions, static_cast<int>(senses.size()), [&](int i, const auto& symbol) {
    const auto& function = symbol.asLinear();
    const auto k = static_cast<std::size_t>(i);
    const double side = -function.constant;
    model.addConstr(function.positions, function.coefficients, senses[k], side, names.empty() ? "" : names[k]);
    stores.sides.push_back(side);
    stores.senses.push_back(senses[k]);
  });
}

}  // namespace

tav::idx::List LinConAdder::add(const tav::opt::ConstraintContainer& block) {
  const auto data = openRecord(record());
  const auto standard = block.group(tav::opt::tag::kConstraint);
  const auto own = block.group(kOwnGroup);
  const auto domain = standard.get(RowQuantity::type).as<int>();
  const int count = domain.size();
  if (count <= 0) return {};
  const auto senses = readSenses(domain);
  const auto functions = standard.get(RowQuantity::function).as<tav::math::Symbol<double>>();
  requireAllLinear(functions, count, *data);
  requireCounts(standard, count);
  requireCounts(own, count);
  const BlockValues<const char*> names(namesIfWanted(*data, standard.get(RowQuantity::name)));

  LockedModel locked(*data);
  GurobiModel& model = *data->model;
  RowStores& stores = *data->rowStores;
  stores.reserve(senses.size());
  locked.add([&](GurobiModel& m) { sendRows(m, functions, names.span(), senses, stores); });
  const tav::idx::List positions = data->linearRows.add(count);

  copyToStore(standard.get(RowQuantity::marginal), positions, stores.marginal);
  copyToStore(standard.get(RowQuantity::basis), positions, stores.basis);
  copyToStore(own.get(kPreference), positions, stores.preference);
  const auto lazy = readGiven<int>(own.get(kLazy), 0);
  if (!lazy.empty()) model.setIntAttrArray("Lazy", positions, lazy);
  return positions;
}

}  // namespace grb
