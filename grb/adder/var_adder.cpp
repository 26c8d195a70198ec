#include "grb/adder/var_adder.h"

#include <fmt/core.h>

#include <algorithm>
#include <cmath>

#include "grb/adder/block_reading.h"
#include "grb/adder/domain_types.h"
#include "grb/gurobi/constants.h"
#include "tav/opt/quantities.h"
#include "tav/opt/support_exception.h"
#include "tav/opt/tags.h"

namespace grb {
namespace {

using tav::opt::VariableQuantity;

std::vector<char> readVariableTypes(const tav::attr::Container<int>& types, int count) {
  requireCount("type", types.size(), count);
  std::vector<char> result(static_cast<std::size_t>(types.size()));
  forEachValue<int>(types, types.size(), [&](int i, int type) {
    constexpr unsigned char kNoType = 255;
    const bool fits = type >= 0 && type < kNoType;
    result[static_cast<std::size_t>(i)] = varTypeToGurobi(fits ? static_cast<unsigned char>(type) : kNoType);
  });
  return result;
}

// One NaN would make Gurobi refuse the block, and with it all that is queued.
void requireBounds(std::span<const double> bounds, std::size_t count) {
  if (bounds.size() != count) {
    throw tav::CheckException::failedEqualTo("bounds.size()", bounds.size(), {"count", count});
  }
  const auto odd = std::find_if(bounds.begin(), bounds.end(), [](double bound) { return std::isnan(bound); });
  if (odd == bounds.end()) return;
  throw tav::opt::SupportException(
      fmt::format("A bound of variable {} of the block is not a number.", odd - bounds.begin()), adderLocation());
}

void setPartitions(GurobiModel& model, const tav::attr::BaseContainer& source, const tav::idx::List& positions) {
  auto partitions = readGiven<int>(source, -1);
  if (partitions.empty()) return;
  for (int& partition : partitions) partition = std::max(partition, -1);
  model.setIntAttrArray("Partition", positions, partitions);
}

// Without a name of its own a variable keeps the one that Gurobi made; given an empty one it is named like a row.
void setNames(GurobiModel& model, std::span<const char* const> names, const tav::idx::List& positions) {
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (*names[i] == '\0') continue;
    model.setStrAttrElement("VarName", positions.at(static_cast<int>(i)), names[i]);
  }
}

// first: the position of the block's first variable. A variable between bounds that leave it only 0 and 1 is as good as
// binary to Gurobi.
void noteBinaries(VariableStores& stores, int first, std::span<const char> types, std::span<const double> lower,
                  std::span<const double> upper) {
  stores.binary.resize(static_cast<std::size_t>(first));
  stores.binary.reserve(stores.binary.size() + types.size());
  for (std::size_t i = 0; i < types.size(); ++i) {
    stores.binary.push_back(types[i] == vartype::kInteger && lower[i] > -1 && upper[i] < 2);
  }
}

}  // namespace

tav::idx::List VarAdder::add(const tav::opt::VariableContainer& block) {
  const auto data = openRecord(record());
  const auto standard = block.group(tav::opt::tag::kVariable);
  const auto own = block.group(kOwnGroup);
  const int count = elementCount(standard);
  if (count <= 0) return {};
  const auto types = readVariableTypes(standard.get(VariableQuantity::type).as<int>(), count);
  requireCounts(standard, count);
  requireCounts(own, count);
  const BlockValues<double> lower(standard.get(VariableQuantity::lower));
  const BlockValues<double> upper(standard.get(VariableQuantity::upper));
  requireBounds(lower.span(), types.size());
  requireBounds(upper.span(), types.size());
  const BlockNames names(*data, standard.get(VariableQuantity::name));

  LockedModel locked(*data);
  GurobiModel& model = *data->model;
  locked.add([&](GurobiModel& m) { m.addVars(count, {}, lower.span(), upper.span(), types, {}); });
  const tav::idx::List positions = data->variables.add(count);

  VariableStores& stores = data->variableStores;
  noteBinaries(stores, positions.front(), types, lower.span(), upper.span());
  copyToStore(standard.get(VariableQuantity::level), positions, stores.level);
  copyToStore(standard.get(VariableQuantity::basis), positions, stores.basis);
  copyToStore<double>(standard.get(VariableQuantity::starts), positions, data->mipStarts);
  copyToStore(own.get(kPreference), positions, stores.preference);
  copyToStore(own.get(kPriority), positions, stores.priority);
  setPartitions(model, own.get(kPartition), positions);
  setNames(model, names.span(), positions);
  return positions;
}

}  // namespace grb
