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

// What the user says of his columns, worked out for all that are sent.
std::vector<double> pointOf(const TranslatedModel& model, std::span<const double> user) {
  rewrite::Starts start;
  start.userColumn = user;
  start.column = ofSentColumns(model.sent, user, kUnknown);
  model.trail.startsForward(start);
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

class UnusedBasis {
 public:
  UnusedBasis(const rewrite::Starts& start, const Choices& choices) : start_(start), choices_(choices) {}

  // "" when the basis is used as it is, or nobody gave one.
  std::string note() const {
    if (start_.userColumnBasis.empty() && start_.userRowBasis.empty()) return {};
    const int use = choices_.basisUse.value_or(hasPoint() ? 1 : 0);
    const bool isWanted = use == 1 || use == 2;
    if (choices_.basisUse && !isWanted) return {};
    if (start_.columnBasis.empty()) return incomplete();
    return isWanted ? sizeNote() : "the start basis is not used: usebasis=2 hands it to the solver";
  }

 private:
  bool hasPoint() const {
    return !start_.column.empty() && !start_.userRow.empty() &&
           std::all_of(start_.column.begin(), start_.column.end(), isKnown) &&
           std::all_of(start_.userRow.begin(), start_.userRow.end(), isKnown);
  }

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
  model.trail.startsForward(start);
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
  if (isDiscrete(model, choices)) {
    const std::size_t count = choices.usesMipStarts ? 0 : mipStartsOf(model, choices).size();
    if (count == 0) return;
    const std::string what = count == 1 ? "the start point is" : fmt::format("the {} start points are", count);
    kavo_link_note(host, fmt::format("{} not used: mipstart=1 hands start points to the search", what).c_str());
    return;
  }
  const double* other = nullptr;
  checkHost(kavo_link_mip_start(host, 0, &other));
  if (other != nullptr || !choices.mipStarts.empty()) {
    kavo_link_note(host, "starts of a search are not used: nothing in the model is discrete");
  }
  const bool isQuadratic = model.sent.beyond() != nullptr &&
                           (model.sent.beyond()->quadratic.heads.size() > 0 ||
                            model.sent.beyond()->objective.kind == rewrite::BeyondObjective::Kind::quadratic);
  if (isQuadratic) return;
  const std::string line = UnusedBasis(start, choices).note();
  if (!line.empty()) kavo_link_note(host, line.c_str());
}

}  // namespace brel::load
