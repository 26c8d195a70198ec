#pragma once

#include <cstddef>
#include <vector>

#include "grb/element_stores.h"

namespace grb {

// The starts of a MIP search: value set k is start k, NaN where a start says nothing of a variable. Writing to the
// first value set that is not there yet adds a start.
class MipStarts final : public tav::attr::AbstractContainer<double> {
 public:
  bool isSettable() const override { return true; }
  bool isResettable() const override { return true; }
  bool hasSolution(int solution) const override { return solution >= 0 && solution < solutionCount(); }
  bool hasSettableSolution(int solution) const override { return solution >= 0 && solution <= solutionCount(); }
  int solutionCount() const override { return static_cast<int>(starts_.size()); }
  // Of the start that reaches farthest.
  int size() const override;
  int itemCount() const override;

  // Forgets all starts.
  void reset() override { starts_.clear(); }

  using tav::attr::AbstractContainer<double>::get;
  using tav::attr::AbstractContainer<double>::set;
  double get(int index, int solution) const override { return at(solution).get(index); }
  void get(const tav::idx::List& list, std::span<double> values, int solution) const override {
    at(solution).get(list, values);
  }
  void set(const tav::idx::List& list, std::span<const double> values, int solution) override;

 private:
  // Raises tav::CheckException when there is no such start.
  const tav::attr::Container<double>& at(int solution) const;

  std::vector<tav::attr::Container<double>> starts_;
};

}  // namespace grb
