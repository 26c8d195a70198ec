#include <cmath>
#include <limits>

#include "brel/rewrite/evaluate.h"
#include "brel/rewrite/rules.h"

namespace brel::rewrite {
namespace {

constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

class MovedRowsStep : public Step {
 public:
  MovedRowsStep(const UserModel& user, const Beyond& beyond) : user_(user), beyond_(beyond) {}

  void startsForward(Starts& starts) const override {
    if (starts.column.empty() || beyond_.columns.size() == 0) return;
    const UserPoint start(user_, &beyond_, starts.userColumn);
    for (std::size_t k = 0; k < beyond_.columns.size(); ++k) {
      starts.column[user_.columns.count + k] = start.auxiliary(k);
    }
  }

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

 private:
  // A row is worth to the user what all rows that are sent for it are worth.
  static void addDuals(const RowHeads& heads, std::span<const double> sent, std::span<double> dual) {
    if (sent.empty() || dual.empty()) return;
    for (std::size_t r = 0; r < heads.size(); ++r) {
      if (heads.user[r] == kNoUserRow) continue;
      double& sum = dual[static_cast<std::size_t>(heads.user[r])];
      sum = std::isnan(sum) ? sent[r] : sum + sent[r];
    }
  }

  // Statuses exist when all that was sent is linear. A row with two sides is then the equality f - s = 0, in which s,
  // the last of its columns, has the status unless the equality itself is basic.
  void takeStatuses(const RowResults& results) const {
    if (results.linearBasis.empty() || results.basis.empty()) return;
    const LinearRows& rows = beyond_.linear;
    for (std::size_t r = 0; r < rows.heads.size(); ++r) {
      if (rows.heads.user[r] == kNoUserRow) continue;
      const auto user = static_cast<std::size_t>(rows.heads.user[r]);
      int status = results.linearBasis[r];
      const bool isRanged =
          rows.heads.type[r] == tav::opt::RowType::equal && user_.rows.lower[user] != user_.rows.upper[user];
      if (isRanged && status != KAVO_BASIC) {
        const int last = rows.terms.column[rows.terms.start[r + 1] - 1];
        status = results.solverColumnBasis[static_cast<std::size_t>(last)];
      }
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
