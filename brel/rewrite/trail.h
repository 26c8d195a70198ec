#pragma once

#include <memory>
#include <ranges>
#include <span>
#include <vector>

#include "brel/rewrite/marks.h"
#include "brel/rewrite/ranges.h"
#include "kavo/link.h"

namespace brel::rewrite {

// A start on its way to the solver: what the user gave, and what the elements that are sent get. Empty: nothing of that
// kind was given. Unknown: NaN, and 0 among statuses (kavo_basis).
struct Starts {
  std::span<const double> userColumn, userRow;
  std::span<const int> userColumnBasis, userRowBasis;
  std::vector<double> column, row;  // per solver column, the user's first; per row that stays the user's
  std::vector<double> linear;       // per row of Beyond::linear
  std::vector<int> columnBasis, rowBasis, linearBasis;
};

// The status of a row with two sides stands on the column that keeps its distance, be it basic or at a side: so a basis
// stays as large as it was.
inline void giveStatus(int& row, int& column) {
  column = row;
  if (row != 0) row = KAVO_BASIS_LOWER;
}

// New numbers on their way to a model that the solver has already. The elements of the user's whose numbers have
// changed; a rule takes out what is not sent and adds what it made of it. The numbers themselves stand in the model as
// it is translated anew.
struct Change {
  std::vector<int> boundColumns;        // the solver's columns with other bounds
  std::vector<int> sideRows;            // the user's rows with other sides
  std::vector<int> coefficientRows;     // the user's rows, kNoUserRow: not sent; entry k is the new value ...
  std::vector<int> coefficientColumns;  // ... of this solver's column in that row
  std::vector<double> coefficientValues;
};

class UserPoint;

// Values on their way back. A span is empty when the solve has not given the quantity. The solver's spans are read, the
// user's filled.
struct RowResults {
  std::span<const double> solverPrimal;    // per solver column
  std::span<const int> solverColumnBasis;  // per solver column
  std::span<const double> solverActivity, solverDual;
  std::span<const int> solverRowBasis;
  std::span<double> activity, dual;  // per user row
  std::span<int> basis;
  // Of the rows that are sent besides those of the user's (Beyond), in their order.
  std::span<const double> linearDual, quadraticDual;
  std::span<const int> linearBasis;
  const UserPoint* point = nullptr;  // the user's own functions at the point; null without one
};

// One applied rule of rewriting: knows the road in both directions. A rule that lacks a direction does not compile.
class Step {
 public:
  virtual ~Step() = default;
  // From the user's start to that of the elements that the rule made or moved.
  virtual void startsForward(Starts& starts) const = 0;
  // From the user's changed elements to those that are sent for them.
  virtual void changeForward(Change& change) const = 0;
  // From the solver's results to those of the user's elements that the rule took away or replaced.
  virtual void resultsBack(RowResults& results) const = 0;
  virtual void rangesBack(const RangeResults& ranges) const = 0;
  // From the parts of the solver's model that contradict each other to the user's elements.
  virtual void marksBack(Marks& marks) const = 0;
};

// The steps in the order in which they were applied: starts and changes walk them forward, results, ranges and marks
// backward.
class Trail {
 public:
  void push(std::unique_ptr<const Step> step) { steps_.push_back(std::move(step)); }
  void startsForward(Starts& starts) const {
    for (const auto& step : steps_) step->startsForward(starts);
  }
  void changeForward(Change& change) const {
    for (const auto& step : steps_) step->changeForward(change);
  }
  void resultsBack(RowResults& results) const {
    for (const auto& step : std::views::reverse(steps_)) step->resultsBack(results);
  }
  void rangesBack(const RangeResults& ranges) const {
    for (const auto& step : std::views::reverse(steps_)) step->rangesBack(ranges);
  }
  void marksBack(Marks& marks) const {
    for (const auto& step : std::views::reverse(steps_)) step->marksBack(marks);
  }

 private:
  std::vector<std::unique_ptr<const Step>> steps_;
};

}  // namespace brel::rewrite
