#pragma once

#include <memory>

#include "grb/data.h"
#include "grb/result/callback_values.h"
#include "grb/result/quantity_view.h"

namespace grb {

// Quantities of variables (tav::opt::VariableQuantity): of the model, or in an incumbent event the new point.
class VarDomain : public QuantityView {
 public:
  VarDomain(const Data& data, std::optional<Event> event);

 protected:
  std::span<const Quantity> provided() const override;
  tav::attr::BaseContainer make(int key) const override;

 private:
  std::weak_ptr<GurobiModel> model_;
  tav::attr::Container<double> priority_;
  tav::attr::Container<double> starts_;
  CallbackSource source_;
  std::optional<Event> event_;
};

// The points that Gurobi holds: solution 0 is the best, k > 0 the k-th of the pool, for which the parameter
// "SolutionNumber" is set. Raw values.
class VarPrimalSolutions : public tav::attr::AbstractContainer<double> {
 public:
  explicit VarPrimalSolutions(std::weak_ptr<GurobiModel> model) : model_(std::move(model)) {}
  int size() const override;
  int solutionCount() const override;
  bool hasSolution(int solution) const override { return solution >= 0 && solution < solutionCount(); }
  double get(int index, int solution) const override;
  void get(const tav::idx::List& list, std::span<double> values, int solution) const override;

 private:
  std::weak_ptr<GurobiModel> model_;
};

}  // namespace grb
