#include "kavo/reader/objectives.h"

#include <fmt/format.h>

#include "kavo/reader/failure.h"
#include "kavo/reader/general_constraint.h"

namespace kavo::reader {

void rankObjectives(Model& model, const std::vector<Rank>& ranks) {
  constexpr std::array<const char*, std::tuple_size_v<Rank>> kNames = {"objpriority", "objweight", "objabstol",
                                                                       "objreltol"};
  for (std::size_t k = 0; k < kNames.size(); ++k) {
    Suffix& suffix = model.suffixes.emplace_back(Suffix{KAVO_OBJECTIVE, kNames[k], k > 0, {}, {}});
    for (std::size_t i = 0; i < ranks.size(); ++i) {
      suffix.index.push_back(static_cast<int>(i));
      suffix.value.push_back(ranks[i][k]);
    }
  }
}

void addPiecewiseParts(Model& model, const std::vector<PiecewisePart>& parts) {
  std::vector<bool> taken(model.columns.size(), false);
  for (const PiecewisePart& part : parts) {
    forLine(part.line, [&] { pushPiecewiseLinear(model, part.points, part.column); });
    taken[static_cast<std::size_t>(part.column)] = true;
  }
  if (parts.size() == 2) model.expressions.push(KAVO_OP_PLUS, 0, 0);
  if (parts.size() > 2) model.expressions.push(KAVO_OP_SUM, static_cast<int>(parts.size()), 0);
  Objective& objective = model.objectives.front();
  objective.expression = model.expressions.end();
  std::size_t kept = 0;
  for (std::size_t k = 0; k < objective.column.size(); ++k) {
    if (taken[static_cast<std::size_t>(objective.column[k])]) continue;
    objective.column[kept] = objective.column[k];
    objective.value[kept++] = objective.value[k];
  }
  if (kept == objective.column.size()) return;
  model.readNotes.push_back(
      fmt::format("coefficients of variables with a piecewise-linear part ({} of them) are left out of the objective",
                  objective.column.size() - kept));
  objective.column.resize(kept);
  objective.value.resize(kept);
}

}  // namespace kavo::reader
