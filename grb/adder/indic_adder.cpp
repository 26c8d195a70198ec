#include "grb/adder/indic_adder.h"

#include <fmt/core.h>

#include "grb/adder/block_reading.h"
#include "grb/adder/domain_types.h"
#include "grb/adder/linear_functions.h"
#include "tav/opt/quantities.h"
#include "tav/opt/tags.h"

namespace grb {
namespace {

using tav::opt::LinkQuantity;
using tav::opt::RowQuantity;
using Symbol = tav::math::Symbol<double>;

// The positions of the linked variables.
std::vector<int> readSwitches(const tav::attr::BaseContainer& linked, int count, const Data& data) {
  const auto symbols = linked.as<Symbol>();
  requireSupported(symbols.size() == count);
  std::vector<int> positions;
  positions.reserve(static_cast<std::size_t>(count));
  forEachValue<Symbol>(symbols, count, [&](int, const Symbol& symbol) {
    requireSupported(symbol.is(tav::math::SymbolKind::kVariable) && symbol.asVariable().space == data.variableSpace());
    positions.push_back(symbol.asVariable().position);
  });
  return positions;
}

void requireBinary(std::span<const int> switches, const Data& data) {
  for (std::size_t i = 0; i < switches.size(); ++i) {
    const int element = static_cast<int>(i);
    requirePosition(switches[i], element, data.variables.count());
    if (!data.variableStores.isBinary(switches[i])) {
      failElement(element, fmt::format("the linked variable {} is not binary", switches[i]));
    }
  }
}

}  // namespace

tav::idx::List IndicAdder::add(const tav::opt::LinkedConstraintContainer& block) {
  const auto data = openRecord(record());
  const auto standard = block.group(tav::opt::tag::kConstraint);
  const auto links = block.group(tav::opt::tag::kConstraintLink);
  const int count = elementCount(standard);
  if (count <= 0) return {};
  const auto senses = readTypes<constrTypeToGurobi>(standard.get(RowQuantity::type), count);
  const auto values = readTypes<indicTypeToGurobi>(links.get(LinkQuantity::type), count);
  const LinearFunctions functions(standard.get(RowQuantity::function), count, *data);
  const auto switches = readSwitches(links.get(LinkQuantity::variable), count, *data);
  requireCounts(standard, count);
  requireBinary(switches, *data);
  const BlockNames names(*data, standard.get(RowQuantity::name));

  LockedModel locked(*data);
  const tav::idx::List positions = tav::idx::lib::Range(data->indicators.count(), count);
  locked.add([&](GurobiModel& model) {
    functions.forEach([&](int i, const LinearTerms& terms) {
      const auto k = static_cast<std::size_t>(i);
      model.addGenConstrIndicator(names.at(i), switches[k], values[k], terms.positions, terms.coefficients, senses[k],
                                  -terms.constant);
      data->generalConstraints.push_back({GeneralConstraint::Kind::indicator, data->indicators.add()});
    });
  });
  return positions;
}

}  // namespace grb
