#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "kavo/error.h"
#include "kavo/model/append_nonlinear.h"
#include "kavo/model/append_parts.h"
#include "kavo/model/element.h"

namespace kavo {

namespace {

struct Member {
  double weight;
  int column;
};

// Fills members with those of set i in the order of their weights, checked.
void sortMembers(const SetData& data, const Place& place, std::size_t i, const Columns& columns,
                 std::vector<Member>& members) {
  members.clear();
  for (std::size_t k = data.start[i]; k < data.start[i + 1]; ++k) {
    const std::size_t position = members.size();
    const double weight = data.weight != nullptr ? data.weight[k] : static_cast<double>(position + 1);
    checkColumn(place, i, position, data.column[k], columns.size());
    if (!std::isfinite(weight)) {
      place.fail(i, fmt::format("the weight {} of column {} must be a finite number", weight, data.column[k]));
    }
    members.push_back({weight, data.column[k]});
  }
  if (members.size() < 2) place.fail(i, fmt::format("a set needs two members or more, not {}", members.size()));
  const auto describe = [&columns](int column) {
    const auto c = static_cast<std::size_t>(column);
    return describeElement("column", c, columns.names.at(c));
  };
  const auto sortBy = [&members](auto key) {
    std::sort(members.begin(), members.end(), [key](const Member& a, const Member& b) { return a.*key < b.*key; });
    return std::adjacent_find(members.begin(), members.end(),
                              [key](const Member& a, const Member& b) { return a.*key == b.*key; });
  };
  if (const auto twice = sortBy(&Member::column); twice != members.end()) {
    place.fail(i, describe(twice->column) + " is a member twice");
  }
  if (const auto equal = sortBy(&Member::weight); equal != members.end()) {
    place.fail(i, fmt::format("{} and {} have the same weight {}", describe(equal[0].column), describe(equal[1].column),
                              equal->weight));
  }
}

void requireSwitch(const Model& model, const ExistingPlace& row, int column) {
  const std::size_t c = checkElement(model, KAVO_COLUMN, column);
  const Columns& all = model.columns;
  const bool isSwitch =
      all.type[c] == KAVO_BINARY || (all.type[c] == KAVO_INTEGER && all.lower[c] >= 0 && all.upper[c] <= 1);
  if (isSwitch) return;
  row.fail(fmt::format("its switch, {}, is not binary", describeElement("column", c, all.names.at(c))));
}

}  // namespace

void appendSets(Model& model, const SetData& data) {
  OrderedSets& sets = model.sets;
  const std::size_t present = sets.size(), members = sets.column.size();
  checkCount("sets", present, data.count);
  checkStarts("set", data.count, data.start);
  if (data.count > 0 && (data.type == nullptr || data.column == nullptr)) {
    throw Error(KAVO_INVALID, "the types or members of the sets are null");
  }
  const Place place{"set", present, data.names};
  const auto mark = sets.names.mark();
  Rollback rollback([&] {
    sets.type.resize(present);
    sets.start.resize(present + 1);
    sets.column.resize(members);
    sets.weight.resize(members);
    sets.names.revert(mark);
  });
  std::vector<Member> found;
  for (std::size_t i = 0; i < data.count; ++i) {
    if (data.type[i] != 1 && data.type[i] != 2) {
      place.fail(i, fmt::format("the type of a set is 1 or 2, not {}", data.type[i]));
    }
    sortMembers(data, place, i, model.columns, found);
    for (const Member& member : found) {
      sets.column.push_back(member.column);
      sets.weight.push_back(member.weight);
    }
    sets.type.push_back(data.type[i]);
    sets.start.push_back(sets.column.size());
  }
  appendNames(sets.names, data.names, data.count, present);
  rollback.keep();
}

void setIndicators(Model& model, const IndicatorData& data) {
  if (data.count > 0 && (data.row == nullptr || data.column == nullptr)) {
    throw Error(KAVO_INVALID, "the rows or their switches are null");
  }
  for (std::size_t i = 0; i < data.count; ++i) {
    const ExistingPlace row(model, KAVO_ROW, data.row[i]);
    requireSwitch(model, row, data.column[i]);
    if (data.value != nullptr && data.value[i] > 1) {
      row.fail(fmt::format("the value that switches it on is 0 or 1, not {}", data.value[i]));
    }
  }
  Rows& rows = model.rows;
  if (rows.indicator.empty()) {
    std::vector<int> none(rows.size(), -1);
    rows.indicatorValue.assign(rows.size(), 0);
    rows.indicator = std::move(none);
  }
  for (std::size_t i = 0; i < data.count; ++i) {
    const auto row = static_cast<std::size_t>(data.row[i]);
    rows.indicator[row] = data.column[i];
    rows.indicatorValue[row] = data.value != nullptr ? data.value[i] : 1;
  }
}

}  // namespace kavo
