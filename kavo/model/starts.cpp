#include "kavo/model/starts.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

namespace kavo {

namespace {

bool hasBasis(const Model& model) { return !model.columnStart.empty() || !model.rowStart.empty(); }

std::size_t known(const std::vector<int>& statuses) {
  return statuses.size() - static_cast<std::size_t>(std::count(statuses.begin(), statuses.end(), 0));
}

}  // namespace

bool lendsBasis(const trpRec& record) {
  const Model& model = record.model;
  if (withholdsStarts(record) || !hasBasis(model)) return false;
  const auto all = static_cast<double>(model.columnStart.size() + model.rowStart.size());
  return static_cast<double>(known(model.columnStart) + known(model.rowStart)) >= record.basisRatio * all;
}

void noteWithheld(const trpRec& record, std::vector<std::string>& notes) {
  const Model& model = record.model;
  if (!withholdsStarts(record)) {
    if (!hasBasis(model) || lendsBasis(record)) return;
    notes.push_back(fmt::format("the start basis is withheld: it has {} of {} statuses, and the basis ratio is {}",
                                known(model.columnStart) + known(model.rowStart),
                                model.columnStart.size() + model.rowStart.size(), record.basisRatio));
    return;
  }
  std::vector<const char*> kinds;
  if (hasBasis(model)) kinds.push_back("the start basis");
  if (!model.primalStart.empty() || !model.dualStart.empty()) kinds.push_back("start values");
  if (!model.mipStarts.empty()) kinds.push_back("MIP starts");
  if (!kinds.empty()) notes.push_back(fmt::format("withheld, as the basis ratio is 1: {}", fmt::join(kinds, ", ")));
}

}  // namespace kavo
