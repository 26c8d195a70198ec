#include "grb/procedure/changes.h"

#include <utility>
#include <vector>

#include "tav/idx/lib/list.h"

namespace grb {
namespace {

// Queued values by element, apart.
struct Values {
  explicit Values(const std::map<int, double>& changes) {
    for (const auto& [position, value] : changes) {
      positions.push_back(position);
      values.push_back(value);
    }
  }
  std::vector<int> positions;
  std::vector<double> values;
};

// One list call for all of them, and none when there are none.
void setAttribute(Data& data, const char* attribute, std::map<int, double>& changes) {
  if (changes.empty()) return;
  Values queued(changes);
  data.model->setDblAttrArray(attribute, std::make_shared<tav::idx::lib::List>(std::move(queued.positions)),
                              queued.values);
  changes.clear();
}

}  // namespace

void applyChanges(Data& data) {
  for (const auto& [row, changes] : data.pendingCoefficients) {
    if (changes.empty()) continue;
    const Values columns(changes);
    data.model->xchgCoeffs(std::vector<int>(columns.positions.size(), row), columns.positions, columns.values);
  }
  data.pendingCoefficients.clear();
  setAttribute(data, "Obj", data.pendingObjective);
  for (const auto& [row, side] : data.pendingSides) data.rowStores->sides[static_cast<std::size_t>(row)] = side;
  setAttribute(data, "RHS", data.pendingSides);
}

}  // namespace grb
