#pragma once

#include <memory>
#include <ranges>
#include <span>
#include <vector>

#include "kavo/link.h"

namespace brel::rewrite {

// Start values on their way to the solver. `column` has one entry per solver column, the user's first; `row` one per
// solver row. NaN: unknown. Empty: none were given.
struct Starts {
  std::span<const double> userColumn, userRow;
  std::vector<double> column, row;
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
  // From the user's start values to those of the elements that the rule made or moved.
  virtual void startsForward(Starts& starts) const = 0;
  // From the solver's results to those of the user's elements that the rule took away or replaced.
  virtual void resultsBack(RowResults& results) const = 0;
};

// The steps in the order in which they were applied: starts walk them forward, results backward.
class Trail {
 public:
  void push(std::unique_ptr<const Step> step) { steps_.push_back(std::move(step)); }
  void startsForward(Starts& starts) const {
    for (const auto& step : steps_) step->startsForward(starts);
  }
  void resultsBack(RowResults& results) const {
    for (const auto& step : std::views::reverse(steps_)) step->resultsBack(results);
  }

 private:
  std::vector<std::unique_ptr<const Step>> steps_;
};

}  // namespace brel::rewrite
