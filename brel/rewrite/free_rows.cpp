#include <algorithm>
#include <cmath>

#include "brel/rewrite/evaluate.h"
#include "brel/rewrite/rules.h"

namespace brel::rewrite {
namespace {

class FreeRowsStep : public Step {
 public:
  FreeRowsStep(const kavo_rows& rows, std::vector<int> dropped) : rows_(rows), dropped_(std::move(dropped)) {}

  void startsForward(Starts&) const override {}  // nothing was sent that could have a start

  void changeForward(Change& change) const override {
    std::erase_if(change.sideRows, [this](int row) { return isDropped(row); });
    for (int& row : change.coefficientRows) {
      if (isDropped(row)) row = kNoUserRow;
    }
  }

  void resultsBack(RowResults& results) const override {
    for (const int row : dropped_) {
      const auto i = static_cast<std::size_t>(row);
      if (!results.activity.empty()) results.activity[i] = activity(rows_, i, results.solverPrimal);
      if (!results.dual.empty()) results.dual[i] = 0;  // a row without a side never binds
      if (!results.basis.empty()) results.basis[i] = KAVO_BASIC;
    }
  }

  void rangesBack(const RangeResults& ranges) const override {
    for (const int row : dropped_) ranges.userSide.give(static_cast<std::size_t>(row), -HUGE_VAL, HUGE_VAL);
  }

  void marksBack(Marks&) const override {}  // what holds nothing contradicts nothing

 private:
  bool isDropped(int row) const { return std::binary_search(dropped_.begin(), dropped_.end(), row); }

  kavo_rows rows_;
  std::vector<int> dropped_;  // in rising order
};

bool isFree(const kavo_rows& rows, std::size_t i) { return Sides(rows, i).areNone(); }

}  // namespace

void freeRows(const kavo_rows& rows, SolverModel& model, Trail& trail) {
  std::vector<int> dropped, kept;
  for (std::size_t r = 0; r < model.rowCount(); ++r) {
    const std::size_t user = model.userRow(r);
    (isFree(rows, user) ? dropped : kept).push_back(static_cast<int>(user));
  }
  if (dropped.empty()) return;
  model.keepRows(std::move(kept));
  trail.push(std::make_unique<FreeRowsStep>(rows, std::move(dropped)));
}

}  // namespace brel::rewrite
