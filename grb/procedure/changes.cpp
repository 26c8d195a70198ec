#include "grb/procedure/changes.h"

#include <utility>
#include <vector>

#include "tav/idx/lib/list.h"

namespace grb {
namespace {

struct Columns {
  explicit Columns(const std::map<int, double>& changes) {
    for (const auto& [column, value] : changes) {
      positions.push_back(column);
      values.push_back(value);
    }
  }
  std::vector<int> positions;
  std::vector<double> values;
};

}  // namespace

void applyChanges(Data& data) {
  for (const auto& [row, changes] : data.pendingCoefficients) {
    if (changes.empty()) continue;
    const Columns columns(changes);
    data.model->xchgCoeffs(std::vector<int>(columns.positions.size(), row), columns.positions, columns.values);
  }
  data.pendingCoefficients.clear();
  if (data.pendingObjective.empty()) return;
  Columns columns(data.pendingObjective);
  data.model->setDblAttrArray("Obj", std::make_shared<tav::idx::lib::List>(std::move(columns.positions)),
                              columns.values);
  data.pendingObjective.clear();
}

}  // namespace grb
