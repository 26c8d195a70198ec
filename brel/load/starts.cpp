#include "brel/load/starts.h"

#include <fmt/core.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>

#include "brel/host.h"

namespace brel::load {
namespace {

constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();
constexpr double kWholeTolerance = 1e-5;  // Gurobi's, unless it is given another

bool isKnown(double value) { return !std::isnan(value); }

// The values of the user's elements that the rows stand for.
template <class T>
std::vector<T> ofSentRows(const rewrite::SolverModel& sent, std::span<const T> user) {
  std::vector<T> values(sent.rowCount());
  for (std::size_t r = 0; r < values.size(); ++r) values[r] = user[sent.userRow(r)];
  return values;
}

// The user's values, with room for the columns behind his.
template <class T>
std::vector<T> ofSentColumns(const rewrite::SolverModel& sent, std::span<const T> user, T unknown) {
  std::vector<T> values(sent.columnCount(), unknown);
  std::copy(user.begin(), user.end(), values.begin());
  return values;
}

bool isWholeType(unsigned char type) { return type == KAVO_BINARY || type == KAVO_INTEGER || type == KAVO_SEMIINTEGER; }

// The user's values as a solver takes them: that of an integer column is rounded, or unknown when it is not whole.
std::vector<double> takenOf(const UserModel& user, std::span<const double> values) {
  std::vector<double> taken(values.begin(), values.end());
  for (std::size_t j = 0; j < taken.size(); ++j) {
    if (!isWholeType(user.columns.type[j])) continue;
    const double near = std::round(taken[j]);
    taken[j] = std::abs(taken[j] - near) <= kWholeTolerance ? near : kUnknown;
  }
  return taken;
}

// Works out what the user says of his elements for all that are sent. His own values stay as they are; what is computed
// from one that the solver will pass over is unknown, or it would contradict what the solver puts in its place.
void carryForward(const TranslatedModel& model, rewrite::Starts& start) {
  const std::span<const double> given = start.userColumn;
  const std::vector<double> taken = takenOf(model.user, given);
  start.userColumn = taken;
  model.trail.startsForward(start);
  start.userColumn = given;
}

// What the user says of his columns, worked out for all that are sent.
std::vector<double> pointOf(const TranslatedModel& model, std::span<const double> user) {
  rewrite::Starts start;
  start.userColumn = user;
  start.column = ofSentColumns(model.sent, user, kUnknown);
  carryForward(model, start);
  return std::move(start.column);
}

bool areKnown(const std::vector<int>& statuses) {
  return std::find(statuses.begin(), statuses.end(), 0) == statuses.end();
}

void takeBasis(const TranslatedModel& model, rewrite::Starts& start) {
  const int* columns = nullptr;
  const int* rows = nullptr;
  checkHost(kavo_link_basis(model.user.host, &columns, &rows));
  if (columns == nullptr && model.user.columns.count > 0) return;
  if (rows == nullptr && model.user.rows.count > 0) return;
  start.userColumnBasis = {columns, model.user.columns.count};
  start.userRowBasis = {rows, model.user.rows.count};
  start.columnBasis = ofSentColumns(model.sent, start.userColumnBasis, 0);
  start.rowBasis = ofSentRows(model.sent, start.userRowBasis);
}

void forgetBasis(rewrite::Starts& start) {
  start.columnBasis.clear();
  start.rowBasis.clear();
  start.linearBasis.clear();
}

bool hasBasis(const rewrite::Starts& start) { return !start.userColumnBasis.empty() || !start.userRowBasis.empty(); }

bool areAllKnown(std::span<const double> values) { return std::all_of(values.begin(), values.end(), isKnown); }
bool isAnyKnown(std::span<const double> values) { return std::any_of(values.begin(), values.end(), isKnown); }

// A value of every column that is sent, and a dual of every row.
bool hasWholePoint(const rewrite::Starts& start) {
  return !start.column.empty() && !start.userRow.empty() && areAllKnown(start.column) && areAllKnown(start.userRow);
}

// Whether the setting usebasis says that no basis, or no point, is to be used. otherKind: its value for the other
// alone.
bool isRefused(const Choices& choices, int otherKind) {
  return choices.basisUse && (*choices.basisUse == 0 || *choices.basisUse == otherKind);
}
constexpr int kBasisOnly = 2, kPointOnly = 3;

// Why the start point of a continuous model is not used; "" when it is, when nobody gave one or the setting says so.
// Modeling systems often send values alone, as guesses for solvers of another kind: only who asks for them is told.
std::string unusedPoint(const UserModel& user, const rewrite::Starts& start, const Choices& choices) {
  const bool hasDuals = isAnyKnown(start.userRow);
  if (isRefused(choices, kBasisOnly) || (!hasDuals && !isAnyKnown(start.userColumn))) return {};
  if (!choices.basisUse && !hasDuals) return {};
  if (hasWholePoint(start)) {
    if (choices.basisUse || !start.columnBasis.empty()) return {};
    return "the start point is not used: usebasis=3 hands it to the solver";
  }
  const auto known = std::count_if(start.userColumn.begin(), start.userColumn.end(), isKnown) +
                     std::count_if(start.userRow.begin(), start.userRow.end(), isKnown);
  const std::size_t all = user.columns.count + user.rows.count, missing = all - static_cast<std::size_t>(known);
  if (missing == 0) return "the start point is not used: what the model is rewritten to has values of its own";
  return fmt::format("the start point is not used: {} of {} variables and rows have no value or dual value in it",
                     missing, all);
}

class UnusedBasis {
 public:
  UnusedBasis(const rewrite::Starts& start, const Choices& choices) : start_(start), choices_(choices) {}

  // "" when the basis is used as it is, or nobody gave one.
  std::string note() const {
    if (!hasBasis(start_) || isRefused(choices_, kPointOnly)) return {};
    if (start_.columnBasis.empty()) return incomplete();
    const bool isWanted = choices_.basisUse || hasWholePoint(start_);
    return isWanted ? sizeNote() : "the start basis is not used: usebasis=2 hands it to the solver";
  }

 private:
  std::string incomplete() const {
    const auto unknown = std::count(start_.userColumnBasis.begin(), start_.userColumnBasis.end(), 0) +
                         std::count(start_.userRowBasis.begin(), start_.userRowBasis.end(), 0);
    if (unknown == 0) return "the start basis is not used: what the model is rewritten to has elements of its own";
    return fmt::format("the start basis is not used: {} of {} variables and rows have no status in it", unknown,
                       start_.userColumnBasis.size() + start_.userRowBasis.size());
  }

  // The solver takes a basis of exactly as many elements as it has rows; from a larger one it takes the first
  // variables.
  std::string sizeNote() const {
    const auto isBasic = [](int status) { return status == KAVO_BASIC; };
    const auto isBasicRow = [](int status) { return status != KAVO_BASIS_LOWER && status != KAVO_BASIS_UPPER; };
    const auto& s = start_;
    const auto rows = s.rowBasis.size() + s.linearBasis.size();
    const auto basic = static_cast<std::size_t>(std::count_if(s.columnBasis.begin(), s.columnBasis.end(), isBasic) +
                                                std::count_if(s.rowBasis.begin(), s.rowBasis.end(), isBasicRow) +
                                                std::count_if(s.linearBasis.begin(), s.linearBasis.end(), isBasicRow));
    if (basic == rows) return {};
    const auto size = fmt::format("{} of its elements are basic and {} must be", basic, rows);
    if (basic < rows) return "the start basis is not used: " + size;
    return fmt::format("the start basis is used in part: {}; the last {} variables of them start at their lower bounds",
                       size, basic - rows);
  }

  const rewrite::Starts& start_;
  const Choices& choices_;
};

}  // namespace

bool isDiscrete(const TranslatedModel& model, const Choices& choices) {
  const unsigned char* types = model.user.columns.type;
  const auto isWhole = [](unsigned char type) { return type != KAVO_CONTINUOUS; };
  if (model.user.sets.count > 0 || std::any_of(types, types + model.user.columns.count, isWhole)) return true;
  if (choices.allObjectives) return true;
  const rewrite::Beyond* beyond = model.sent.beyond();
  if (beyond == nullptr) return false;
  const auto& whole = beyond->columns.isInteger;
  return !beyond->sets.type.empty() || beyond->indicator.heads.size() > 0 || beyond->nonlinear.heads.size() > 0 ||
         beyond->objective.kind == rewrite::BeyondObjective::Kind::nonlinear ||
         std::any_of(whole.begin(), whole.end(), [](unsigned char is) { return is != 0; });
}

rewrite::Starts startOf(const TranslatedModel& model) {
  const UserModel& user = model.user;
  const double* primal = nullptr;
  const double* dual = nullptr;
  checkHost(kavo_link_starts(user.host, &primal, &dual));
  rewrite::Starts start;
  if (primal != nullptr) {
    start.userColumn = {primal, user.columns.count};
    start.column = ofSentColumns(model.sent, start.userColumn, kUnknown);
  }
  if (dual != nullptr) {
    start.userRow = {dual, user.rows.count};
    start.row = ofSentRows(model.sent, start.userRow);
  }
  takeBasis(model, start);
  carryForward(model, start);
  if (!areKnown(start.columnBasis) || !areKnown(start.rowBasis) || !areKnown(start.linearBasis)) forgetBasis(start);
  return start;
}

std::vector<std::vector<double>> mipStartsOf(const TranslatedModel& model, const Choices& choices) {
  trpRec* host = model.user.host;
  if (!isDiscrete(model, choices) || kavo_link_starts_withheld(host) != 0) return {};
  std::vector<std::vector<double>> starts;
  const auto add = [&](const double* user) {
    const std::span<const double> values(user, model.user.columns.count);
    if (std::any_of(values.begin(), values.end(), isKnown)) starts.push_back(pointOf(model, values));
  };
  const double* values = nullptr;
  const double* dual = nullptr;
  checkHost(kavo_link_starts(host, &values, &dual));
  if (values != nullptr) add(values);
  for (std::size_t i = 0;; ++i) {
    checkHost(kavo_link_mip_start(host, i, &values));
    if (values == nullptr) break;
    add(values);
  }
  for (const auto& start : choices.mipStarts) add(start.data());
  return starts;
}

void noteUnusedStarts(const TranslatedModel& model, const rewrite::Starts& start, const Choices& choices) {
  trpRec* host = model.user.host;
  const auto note = [host](const std::string& line) {
    if (!line.empty()) kavo_link_note(host, line.c_str());
  };
  const bool isBasisWanted = hasBasis(start) && !isRefused(choices, kPointOnly);
  if (isDiscrete(model, choices)) {
    if (isBasisWanted) note("the start basis is not used: something in the model is discrete");
    std::size_t count = choices.usesMipStarts ? 0 : mipStartsOf(model, choices).size();
    if (count > 0 && choices.usesHints && isAnyKnown(start.userColumn)) --count;
    if (count == 0) return;
    const std::string what = count == 1 ? "the start point is" : fmt::format("the {} start points are", count);
    return note(fmt::format("{} not used: mipstart=1 hands start points to the search", what));
  }
  const double* other = nullptr;
  checkHost(kavo_link_mip_start(host, 0, &other));
  if (other != nullptr || !choices.mipStarts.empty()) {
    note("starts of a search are not used: nothing in the model is discrete");
  }
  const bool isQuadratic = model.sent.beyond() != nullptr &&
                           (model.sent.beyond()->quadratic.heads.size() > 0 ||
                            model.sent.beyond()->objective.kind == rewrite::BeyondObjective::Kind::quadratic);
  if (!isQuadratic) {
    note(UnusedBasis(start, choices).note());
    return note(unusedPoint(model.user, start, choices));
  }
  if (isBasisWanted) note("the start basis is not used: the model has quadratic terms");
  const bool isPointWanted = choices.basisUse && !isRefused(choices, kBasisOnly);
  if (isPointWanted && (isAnyKnown(start.userColumn) || isAnyKnown(start.userRow))) {
    note("the start point is not used: the model has quadratic terms");
  }
}

}  // namespace brel::load
