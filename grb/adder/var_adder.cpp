#include "grb/adder/var_adder.h"

#include <fmt/core.h>

#include <algorithm>
#include <cmath>

#include "grb/adder/block_reading.h"
#include "grb/adder/domain_types.h"
#include "tav/opt/quantities.h"
#include "tav/opt/support_exception.h"
#include "tav/opt/tags.h"

namespace grb {
namespace {

using tav::opt::VariableQuantity;

std::vector<char> gurobiTypes(const std::vector<int>& types) {
  std::vector<char> result(types.size());
  std::transform(types.begin(), types.end(), result.begin(), [](int type) {
    constexpr unsigned char kNoType = 255;
    const bool fits = type >= 0 && type < kNoType;
    return varTypeToGurobi(fits ? static_cast<unsigned char>(type) : kNoType);
  });
  return result;
}

// One NaN would make Gurobi refuse the block, and with it all that is queued.
std::vector<double> readBounds(const tav::attr::ContainerDict& group, int quantity, std::size_t count) {
  auto bounds = readAll<double>(group.get(quantity));
  if (bounds.size() != count) {
    throw tav::CheckException::failedEqualTo("bounds.size()", bounds.size(), {"count", count});
  }
  const auto odd = std::find_if(bounds.begin(), bounds.end(), [](double bound) { return std::isnan(bound); });
  if (odd == bounds.end()) return bounds;
  throw tav::opt::SupportException(
      fmt::format("A bound of variable {} of the block is not a number.", odd - bounds.begin()), adderLocation());
}

void setPartitions(GurobiModel& model, const tav::attr::BaseContainer& source, const tav::idx::List& positions) {
  if (source.itemCount() == 0) return;
  auto partitions = readAll<int>(source);
  for (int& partition : partitions) partition = std::max(partition, -1);
  model.setIntAttrArray("Partition", positions, partitions);
}

void setNames(GurobiModel& model, const std::vector<const char*>& names, const tav::idx::List& positions) {
  for (std::size_t i = 0; i < names.size(); ++i) {
    model.setStrAttrElement("VarName", positions.at(static_cast<int>(i)), names[i]);
  }
}

}  // namespace

tav::idx::List VarAdder::add(const tav::opt::VariableContainer& block) {
  const auto data = openRecord(record());
  const auto standard = block.group(tav::opt::tag::kVariable);
  const auto own = block.group(kOwnGroup);
  const auto types = readAll<int>(standard.get(VariableQuantity::type));
  if (types.empty()) return {};
  const auto gurobiType = gurobiTypes(types);
  const auto lower = readBounds(standard, VariableQuantity::lower, types.size());
  const auto upper = readBounds(standard, VariableQuantity::upper, types.size());

  LockedModel locked(*data);
  GurobiModel& model = *data->model;
  const int count = static_cast<int>(types.size());
  locked.addTo(0, [&](GurobiModel& m) { m.addVars(count, {}, lower, upper, gurobiType, {}); });
  const tav::idx::List positions = data->variables.add(count);

  VariableStores& stores = data->variableStores;
  copyToStore(standard.get(VariableQuantity::level), positions, stores.level);
  copyToStore(standard.get(VariableQuantity::basis), positions, stores.basis);
  copyToStore(own.get(kPreference), positions, stores.preference);
  copyToStore(own.get(kPriority), positions, stores.priority);
  setPartitions(model, own.get(kPartition), positions);
  setNames(model, readNames(*data, standard.get(VariableQuantity::name)), positions);
  return positions;
}

}  // namespace grb
