#include "brel/load/loaded.h"

#include <cstddef>
#include <string_view>
#include <type_traits>
#include <variant>

#include "brel/hash.h"
#include "brel/host.h"
#include "brel/load/starts.h"
#include "brel/rewrite/sides.h"

namespace brel::load {
namespace {

void addHostStarts(const UserModel& user, Hash& hash) {
  const std::size_t columns = user.columns.count;
  const double* primal = nullptr;
  const double* dual = nullptr;
  checkHost(kavo_link_starts(user.host, &primal, &dual));
  hash.add(primal, columns);
  hash.add(dual, user.rows.count);
  const int* columnBasis = nullptr;
  const int* rowBasis = nullptr;
  checkHost(kavo_link_basis(user.host, &columnBasis, &rowBasis));
  hash.add(columnBasis, columns);
  hash.add(rowBasis, user.rows.count);
  const double* start = nullptr;
  std::size_t count = 0;
  do {
    checkHost(kavo_link_mip_start(user.host, count++, &start));
    hash.add(start, columns);
  } while (start != nullptr);
}

std::uint64_t hashOfStarts(const TranslatedModel& model, const settings::Given& given, const Choices& choices) {
  Hash hash;
  addHostStarts(model.user, hash);
  for (const auto& start : choices.mipStarts) hash.add(start.data(), start.size());
  kavo_suffix priority{};
  checkHost(kavo_link_suffix(model.user.host, KAVO_COLUMN, "priority", &priority));
  hash.add(priority.index, priority.count);
  hash.add(priority.value, priority.count);
  for (const char* setting : {"usebasis", "mipstart", "varhint"}) {
    hash.add(static_cast<long long>(settings::wholeNumber(given, setting).value_or(-1)));
  }
  return hash.value();
}

std::uint64_t hashOfSettings(const settings::Given& given) {
  Hash hash;
  const auto add = [&hash](const auto& value) {
    if constexpr (std::is_same_v<std::decay_t<decltype(value)>, int>) {
      hash.add(static_cast<long long>(value));
    } else {
      hash.add(value);
    }
  };
  for (const settings::Checked& setting : given.settings) {
    hash.add(std::string_view(setting.row->name()));
    std::visit(add, setting.value);
  }
  return hash.value();
}

bool isGiven(const settings::Given& given, std::string_view name) {
  for (const settings::Checked& setting : given.settings) {
    if (setting.row->name() == name) return true;
  }
  return false;
}

}  // namespace

Loaded::Loaded(const TranslatedModel& model, const settings::Given& given, const Choices& choices)
    : isPlain_(model.sent.beyond() == nullptr && !choices.allObjectives && !choices.preferences),
      readsParameters_(isGiven(given, "readparams")),
      names_(settings::wholeNumber(given, "names")),
      isDiscrete_(isDiscrete(model, choices)),
      settings_(hashOfSettings(given)),
      columns_(model.user.columns.count),
      starts_(hashOfStarts(model, given, choices)) {
  checkHost(kavo_link_objective_number(model.user.host, &objective_));
  if (model.user.objective) sense_ = model.user.objective->sense;
  rows_.reserve(model.user.rows.count);
  for (std::size_t i = 0; i < model.user.rows.count; ++i) {
    const rewrite::Sides sides(model.user.rows, i);
    if (sides.areNone()) {
      rows_.push_back(RowKind::free);
    } else if (sides.areRange()) {
      rows_.push_back(RowKind::range);
    } else if (sides.areEqual()) {
      rows_.push_back(RowKind::equal);
    } else {
      rows_.push_back(sides.hasLower() ? RowKind::lower : RowKind::upper);
    }
  }
}

bool Loaded::differsInNumbersOnly(const Loaded& later) const {
  return isPlain_ && later.isPlain_ && !readsParameters_ && names_ == later.names_ && columns_ == later.columns_ &&
         objective_ == later.objective_ && sense_ == later.sense_ && starts_ == later.starts_ && rows_ == later.rows_ &&
         (!isDiscrete_ || settings_ == later.settings_);
}

bool Loaded::isKeptAfter(const kavo_finish& finish) const {
  if (finish.stop != KAVO_STOP_FINISHED) return false;
  return finish.status == KAVO_OPTIMAL || (finish.status == KAVO_INFEASIBLE && !isDiscrete_);
}

}  // namespace brel::load
