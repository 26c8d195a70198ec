#include "brel/load/preferences.h"

#include <fmt/core.h>

#include <cmath>
#include <limits>
#include <set>
#include <utility>

#include "brel/host.h"
#include "brel/rewrite/sides.h"
#include "tav/util/exception.h"

namespace brel::load {
namespace {

constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
constexpr double kUsual = 1;  // the penalty, and the preference, of what is given none

// A suffix by element, NaN where there is none; empty when the model has no such suffix.
class Given {
 public:
  Given(const UserModel& user, int kind, const char* name, std::size_t count) : name_(name) {
    kavo_suffix suffix{};
    checkHost(kavo_link_suffix(user.host, kind, name, &suffix));
    if (suffix.count == 0) return;
    values_.assign(count, kNone);
    for (std::size_t k = 0; k < suffix.count; ++k) values_[static_cast<std::size_t>(suffix.index[k])] = suffix.value[k];
  }
  bool any() const { return !values_.empty(); }
  bool has(std::size_t i) const { return any() && !std::isnan(values_[i]); }
  double operator[](std::size_t i) const { return has(i) ? values_[i] : kNone; }
  std::string told(std::size_t i) const {
    return has(i) ? fmt::format("{} {}", name_, values_[i]) : fmt::format("no {}", name_);
  }

 private:
  const char* name_;
  std::vector<double> values_;
};

double preferenceOf(double penalty) { return penalty > 0 ? 1 / penalty : 0; }

bool areSame(double a, double b) { return a == b || (a <= 0 && b <= 0); }

std::string columnName(const UserModel& user, std::size_t j) {
  const std::string name = nameOf(user.columns.names, j);
  return name.empty() ? fmt::format("_svar[{}]", j + 1) : name;
}

// The penalty of a variable's bounds, of which only those that it has count; NaN when it is given none.
double boundPenalty(const UserModel& user, const Given& lower, const Given& upper, std::size_t j) {
  const bool hasLower = user.columns.lower[j] > -rewrite::kUserInfinity;
  const bool hasUpper = user.columns.upper[j] < rewrite::kUserInfinity;
  if (!hasLower || !hasUpper) return hasLower ? lower[j] : upper[j];
  if (!lower.has(j) && !upper.has(j)) return kNone;
  const double ofLower = lower.has(j) ? lower[j] : kUsual;
  const double ofUpper = upper.has(j) ? upper[j] : kUsual;
  if (areSame(ofLower, ofUpper)) return ofLower;
  throw tav::UserException(
      fmt::format("variable {} has {} and {}: a relaxation knows one penalty for both bounds (without one it is 1)",
                  columnName(user, j), lower.told(j), upper.told(j)));
}

// Puts the two ways of saying it together, element by element.
class Merger {
 public:
  double merge(double preference, double penalty) {
    if (std::isnan(penalty)) return preference;
    if (std::isnan(preference)) return preferenceOf(penalty);
    ++both_;
    return preference;
  }

  void note(trpRec* host, const char* what) const {
    if (both_ == 0) return;
    const auto line = fmt::format("where both are given feaspref counts, not the penalty ({}: {})", what, both_);
    kavo_link_note(host, line.c_str());
  }

 private:
  std::size_t both_ = 0;
};

bool isSemi(const kavo_columns& columns, std::size_t j) {
  return columns.type[j] == KAVO_SEMICONTINUOUS || columns.type[j] == KAVO_SEMIINTEGER;
}

bool isBinary(const kavo_columns& columns, std::size_t j) { return columns.type[j] == KAVO_BINARY; }

// Gurobi relaxes no bound of semicontinuous columns. Binary ones are sent as integer ones with the bounds 0 and 1,
// which hold always.
bool isKept(const kavo_columns& columns, std::size_t j) { return isSemi(columns, j) || isBinary(columns, j); }

bool isAnyKept(const kavo_columns& columns) {
  for (std::size_t j = 0; j < columns.count; ++j) {
    if (isKept(columns, j)) return true;
  }
  return false;
}

// How many integer columns switch rows: to Gurobi they are binary ones, so that 0 and 1 hold always, too.
std::size_t switches(const UserModel& user) {
  std::set<int> found;
  for (std::size_t i = 0; user.rows.indicator != nullptr && i < user.rows.count; ++i) {
    const int column = user.rows.indicator[i];
    if (column >= 0 && !isBinary(user.columns, static_cast<std::size_t>(column))) found.insert(column);
  }
  return found.size();
}

void noteKept(trpRec* host, const char* what, std::size_t count) {
  if (count == 0) return;
  const auto line =
      fmt::format("the bounds of {} variables do not give way in a relaxation (variables: {})", what, count);
  kavo_link_note(host, line.c_str());
}

std::vector<double> ofColumns(const TranslatedModel& model) {
  const UserModel& user = model.user;
  const std::size_t count = user.columns.count;
  noteKept(user.host, "switching", switches(user));
  const Given preference(user, KAVO_COLUMN, "feaspref", count);
  const Given lower(user, KAVO_COLUMN, "lbpen", count), upper(user, KAVO_COLUMN, "ubpen", count);
  const bool isAnyGiven = preference.any() || lower.any() || upper.any();
  if (!isAnyGiven && !isAnyKept(user.columns) && model.sent.columnCount() == count) return {};
  // That 0 and 1 stay is what a binary column is, and worth a word only where something else could be expected.
  const auto isExpected = [&](std::size_t j) {
    const bool isTight = user.columns.lower[j] > 0 || user.columns.upper[j] < 1;
    return isTight || preference[j] > 0 || lower[j] > 0 || upper[j] > 0;
  };
  std::vector<double> values(model.sent.columnCount(), 0);
  Merger merger;
  std::size_t semis = 0, binaries = 0;
  for (std::size_t j = 0; j < count; ++j) {
    semis += isSemi(user.columns, j);
    binaries += isBinary(user.columns, j) && isExpected(j);
    if (!isKept(user.columns, j)) values[j] = merger.merge(preference[j], boundPenalty(user, lower, upper, j));
  }
  noteKept(user.host, "semicontinuous and semi-integer", semis);
  noteKept(user.host, "binary", binaries);
  merger.note(user.host, "variables");
  return values;
}

std::vector<double> ofRows(const UserModel& user) {
  const Given preference(user, KAVO_ROW, "feaspref", user.rows.count);
  const Given penalty(user, KAVO_ROW, "rhspen", user.rows.count);
  std::vector<double> values(user.rows.count, kNone);
  Merger merger;
  for (std::size_t i = 0; i < values.size(); ++i) values[i] = merger.merge(preference[i], penalty[i]);
  merger.note(user.host, "rows");
  return values;
}

// No value of the slack of a row whose sides cross keeps both, whatever the row does: its bounds give way instead.
void moveToSlacks(const TranslatedModel& model, Preferences& preferences) {
  for (std::size_t r = 0; r < model.sent.rowCount(); ++r) {
    const std::size_t user = model.sent.userRow(r);
    const rewrite::Sides sides(model.user.rows, user);
    if (!sides.areRange() || sides.lower < sides.upper) continue;
    const auto slack = static_cast<std::size_t>(model.sent.terms(r).columns.back());
    preferences.column[slack] = std::exchange(preferences.row[user], 0);
  }
}

}  // namespace

Preferences preferencesOf(const TranslatedModel& model) {
  Preferences found{ofColumns(model), ofRows(model.user)};
  moveToSlacks(model, found);
  return found;
}

}  // namespace brel::load
