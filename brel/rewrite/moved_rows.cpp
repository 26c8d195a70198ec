#include <cmath>
#include <limits>

#include "brel/expr/evaluate.h"
#include "brel/rewrite/beyond_marks.h"
#include "brel/rewrite/evaluate.h"
#include "brel/rewrite/rules.h"

namespace brel::rewrite {
namespace {

constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

class MovedRowsStep : public Step {
 public:
  MovedRowsStep(const UserModel& user, const Beyond& beyond) : user_(user), beyond_(beyond) {}

  void startsForward(Starts& starts) const override {
    if (!starts.column.empty() && beyond_.columns.size() > 0) {
      const std::vector<expr::NodeId>& definition = beyond_.columns.definition;
      std::vector<double> nodes;
      expr::evaluate(*beyond_.graph, starts.userColumn.first(user_.columns.count), nodes, kComparisonTolerance,
                     definition);
      for (std::size_t k = 0; k < definition.size(); ++k) {
        const bool isKnown = definition[k] >= 0;
        starts.column[user_.columns.count + k] = isKnown ? nodes[static_cast<std::size_t>(definition[k])] : kUnknown;
      }
    }
    const RowHeads& heads = beyond_.linear.heads;
    for (std::size_t r = 0; r < heads.size(); ++r) {
      if (!starts.userRow.empty())
        starts.linear.push_back(heads.user[r] == kNoUserRow ? 0 : starts.userRow[at(heads, r)]);
      if (!starts.userRowBasis.empty()) starts.linearBasis.push_back(startStatus(r, starts));
    }
  }

  // Other numbers may need other elements: such models are loaded anew, and nothing comes this way.
  void changeForward(Change&) const override {}

  void resultsBack(RowResults& results) const override {
    for (std::size_t i = 0; i < beyond_.moved.size(); ++i) {
      if (beyond_.moved[i] == 0) continue;
      const bool isFree = Sides(user_.rows, i).areNone();
      if (!results.activity.empty()) results.activity[i] = results.point->activity(i);
      if (!results.dual.empty()) results.dual[i] = isFree ? 0 : kUnknown;  // a row without a side never binds
      if (!results.basis.empty()) results.basis[i] = isFree ? KAVO_BASIC : KAVO_SUPERBASIC;
    }
    addDuals(beyond_.linear.heads, results.linearDual, results.dual);
    addDuals(beyond_.quadratic.heads, results.quadraticDual, results.dual);
    takeStatuses(results);
  }

  void rangesBack(const RangeResults& ranges) const override {
    for (std::size_t i = 0; i < beyond_.moved.size(); ++i) {
      if (beyond_.moved[i] != 0 && Sides(user_.rows, i).areNone()) ranges.userSide.give(i, -HUGE_VAL, HUGE_VAL);
    }
    const RowHeads& heads = beyond_.linear.heads;
    for (std::size_t r = 0; r < heads.size(); ++r) {
      if (heads.user[r] == kNoUserRow) continue;
      const Sides sides(user_.rows, at(heads, r));
      if (isRanged(r)) {
        giveSideOfColumn(ranges, sides, at(heads, r), slackOf(r));
      } else {
        ranges.userSide.give(at(heads, r), sides.side() + ranges.linear.low[r], sides.side() + ranges.linear.high[r]);
      }
    }
  }

  void marksBack(Marks& marks) const override { markElements(user_, beyond_, marks); }

 private:
  static std::size_t at(const RowHeads& heads, std::size_t row) { return static_cast<std::size_t>(heads.user[row]); }

  // Of a row that is sent for one of the user's, on whose column it may stand; unknown for rows that only help.
  int startStatus(std::size_t row, Starts& starts) const {
    if (beyond_.linear.heads.user[row] == kNoUserRow) return 0;
    int status = starts.userRowBasis[at(beyond_.linear.heads, row)];
    if (isRanged(row)) giveStatus(status, starts.columnBasis[slackOf(row)]);
    return status;
  }

  // Whether a row of the user's with two sides is sent as the equality f - s = 0.
  bool isRanged(std::size_t row) const { return beyond_.linear.heads.rangeColumn[row] >= 0; }
  std::size_t slackOf(std::size_t row) const { return static_cast<std::size_t>(beyond_.linear.heads.rangeColumn[row]); }

  // A row is worth to the user what all rows that are sent for it are worth.
  static void addDuals(const RowHeads& heads, std::span<const double> sent, std::span<double> dual) {
    if (sent.empty() || dual.empty()) return;
    for (std::size_t r = 0; r < heads.size(); ++r) {
      if (heads.user[r] == kNoUserRow) continue;
      double& sum = dual[static_cast<std::size_t>(heads.user[r])];
      sum = std::isnan(sum) ? sent[r] : sum + sent[r];
    }
  }

  // Statuses exist when all that was sent is linear. That of a row with two sides stands on its column unless the
  // equality itself is basic.
  void takeStatuses(const RowResults& results) const {
    if (results.linearBasis.empty() || results.basis.empty()) return;
    const LinearRows& rows = beyond_.linear;
    for (std::size_t r = 0; r < rows.heads.size(); ++r) {
      if (rows.heads.user[r] == kNoUserRow) continue;
      const auto user = static_cast<std::size_t>(rows.heads.user[r]);
      int status = results.linearBasis[r];
      if (isRanged(r) && status != KAVO_BASIC) status = results.solverColumnBasis[slackOf(r)];
      results.basis[user] = status;
    }
  }

  const UserModel user_;
  const Beyond& beyond_;
};

}  // namespace

void movedRows(const UserModel& user, const SolverModel& model, Trail& trail) {
  trail.push(std::make_unique<MovedRowsStep>(user, *model.beyond()));
}

}  // namespace brel::rewrite
