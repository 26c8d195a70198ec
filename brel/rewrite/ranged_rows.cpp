#include <algorithm>

#include "brel/rewrite/evaluate.h"
#include "brel/rewrite/rules.h"

namespace brel::rewrite {
namespace {

struct RangedRow {
  int user, solver, slack;  // positions: the user's row, the equality, the column s
};

class RangedRowsStep : public Step {
 public:
  RangedRowsStep(const kavo_rows& rows, std::vector<RangedRow> ranged) : rows_(rows), ranged_(std::move(ranged)) {}

  void startsForward(Starts& starts) const override {
    for (const RangedRow& r : ranged_) {
      const auto slack = static_cast<std::size_t>(r.slack);
      if (!starts.column.empty()) {  // unknown when one of the row's columns is
        starts.column[slack] = activity(rows_, static_cast<std::size_t>(r.user), starts.userColumn);
      }
      if (!starts.rowBasis.empty())
        giveStatus(starts.rowBasis[static_cast<std::size_t>(r.solver)], starts.columnBasis[slack]);
    }
  }

  // The sides are the column's bounds.
  void changeForward(Change& change) const override {
    std::erase_if(change.sideRows, [&](int row) {
      const auto found = std::lower_bound(ranged_.begin(), ranged_.end(), row,
                                          [](const RangedRow& r, int user) { return r.user < user; });
      const bool isRanged = found != ranged_.end() && found->user == row;
      if (isRanged) change.boundColumns.push_back(found->slack);
      return isRanged;
    });
  }

  void resultsBack(RowResults& results) const override {
    for (const RangedRow& r : ranged_) {
      const auto user = static_cast<std::size_t>(r.user);
      const auto solver = static_cast<std::size_t>(r.solver);
      const auto slack = static_cast<std::size_t>(r.slack);
      if (!results.activity.empty()) {
        results.activity[user] = results.solverActivity[solver] + results.solverPrimal[slack];
      }
      if (!results.basis.empty() && results.solverRowBasis[solver] != KAVO_BASIC) {
        results.basis[user] = results.solverColumnBasis[slack];
      }
    }
  }

  void rangesBack(const RangeResults& ranges) const override {
    for (const RangedRow& r : ranged_) {
      const auto user = static_cast<std::size_t>(r.user);
      giveSideOfColumn(ranges, Sides(rows_, user), user, static_cast<std::size_t>(r.slack));
    }
  }

  void marksBack(Marks& marks) const override {
    for (const RangedRow& r : ranged_) {
      const auto slack = static_cast<std::size_t>(r.slack);
      const bool isIn = marks.row[static_cast<std::size_t>(r.solver)] || marks.lower[slack] || marks.upper[slack];
      if (isIn) marks.userRow[static_cast<std::size_t>(r.user)] = sideMarkOfColumn(marks, slack);
    }
  }

 private:
  kavo_rows rows_;
  std::vector<RangedRow> ranged_;  // in the order of the user's rows
};

std::string slackName(const kavo_rows& rows, std::size_t row) {
  const std::string name = nameOf(rows.names, row);
  return name.empty() ? name : name + "_range";
}

}  // namespace

void rangedRows(const kavo_rows& rows, SolverModel& model, Trail& trail) {
  std::vector<RangedRow> ranged;
  for (std::size_t r = 0; r < model.rowCount(); ++r) {
    const std::size_t user = model.userRow(r);
    if (!Sides(rows, user).areRange()) continue;
    const int slack = model.addColumn(rows.lower[user], rows.upper[user], slackName(rows, user));
    model.subtractColumn(r, slack);
    ranged.push_back({static_cast<int>(user), static_cast<int>(r), slack});
  }
  if (!ranged.empty()) trail.push(std::make_unique<RangedRowsStep>(rows, std::move(ranged)));
}

}  // namespace brel::rewrite
