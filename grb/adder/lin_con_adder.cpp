#include "grb/adder/lin_con_adder.h"

#include <algorithm>
#include <limits>

#include "grb/adder/block_reading.h"
#include "grb/adder/domain_types.h"
#include "grb/adder/linear_functions.h"
#include "tav/opt/quantities.h"
#include "tav/opt/tags.h"

namespace grb {
namespace {

using tav::opt::RowQuantity;

// The sides of the rows as the framework gave them, for those who ask later.
void noteSide(RowStores& stores, char sense, double side) {
  constexpr double kNone = std::numeric_limits<double>::infinity();
  stores.lower.push_back(sense == 'L' ? -kNone : side);
  stores.upper.push_back(sense == 'G' ? kNone : side);
}

void sendRows(GurobiModel& model, const SymbolContainer& functions, const std::vector<char>& senses,
              const std::vector<const char*>& names, int& sent, RowStores& stores) {
  Terms terms;
  forEachFunction(functions, static_cast<int>(senses.size()), [&](int i, const auto& symbol) {
    const auto& function = symbol.asLinear();
    const auto k = static_cast<std::size_t>(i);
    const double side = -function.constant;
    terms.load(function);
    model.addConstr(terms.positions(), terms.coefficients(), senses[k], side, names.empty() ? "" : names[k]);
    noteSide(stores, senses[k], side);
    ++sent;
  });
}

}  // namespace

tav::idx::List LinConAdder::add(const tav::opt::ConstraintContainer& block) {
  const auto data = openRecord(record());
  const auto standard = block.group(tav::opt::tag::kConstraint);
  const auto own = block.group(kOwnGroup);
  const auto types = readAll<int>(standard.get(RowQuantity::type));
  if (types.empty()) return {};
  std::vector<char> senses(types.size());
  std::transform(types.begin(), types.end(), senses.begin(), constrTypeToGurobi);
  const int count = static_cast<int>(types.size());
  const auto functions = standard.get(RowQuantity::function).as<tav::math::Symbol<double>>();
  requireAllLinear(functions, count, *data);
  const auto names = readNames(*data, standard.get(RowQuantity::name));

  LockedModel locked(*data);
  GurobiModel& model = *data->model;
  RowStores& stores = *data->rowStores;
  stores.lower.reserve(stores.lower.size() + types.size());
  stores.upper.reserve(stores.upper.size() + types.size());
  int sent = 0;
  locked.addTo(sent, [&](GurobiModel& m) { sendRows(m, functions, senses, names, sent, stores); });
  const tav::idx::List positions = data->linearRows.add(count);

  copyToStore(standard.get(RowQuantity::marginal), positions, stores.marginal);
  copyToStore(standard.get(RowQuantity::basis), positions, stores.basis);
  copyToStore(own.get(kPreference), positions, stores.preference);
  const auto lazy = own.get(kLazy);
  if (lazy.itemCount() > 0) model.setIntAttrArray("Lazy", positions, readAll<int>(lazy));
  return positions;
}

}  // namespace grb
