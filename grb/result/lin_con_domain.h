#pragma once

#include <memory>

#include "grb/data.h"
#include "grb/result/model_view.h"
#include "grb/result/transforms.h"

namespace grb {

// Quantities of linear rows (tav::opt::RowQuantity). A slack is the activity minus the right-hand side, whatever the
// sense. Nothing in the context of a running solve.
class LinConDomain : public ModelView {
 public:
  LinConDomain(const Data& data, std::optional<Event> event);

 protected:
  tav::attr::BaseContainer make(int key) const override;

 private:
  std::shared_ptr<const RowStores> rows_;
};

// The functions of linear rows: the row a'x <= b is the function a'x - b.
class LinConFunction : public ModelView {
 public:
  LinConFunction(const Data& data, std::optional<Event> event);

 protected:
  tav::attr::BaseContainer make(int key) const override;
};

// The basis status of each row. Gurobi tells it of the row's slack: a tight less-or-equal row has its slack at the
// lower bound, which is the row at its upper side.
class LinConBasisSolutions : public tav::attr::AbstractContainer<int> {
 public:
  explicit LinConBasisSolutions(std::weak_ptr<GurobiModel> model) : model_(std::move(model)) {}
  int size() const override;
  int solutionCount() const override;
  int get(int index, int solution) const override;
  void get(const tav::idx::List& list, std::span<int> values, int solution) const override;

 private:
  std::weak_ptr<GurobiModel> model_;
};

// One end of the interval in which the right-hand side of each row may move while the basis stays, relative to the
// right-hand side: how far it may go. An end that is infinite stays infinite.
class LinConSensBounds : public tav::attr::AbstractContainer<double> {
 public:
  // attribute: "SARHSLow" or "SARHSUp".
  LinConSensBounds(std::weak_ptr<GurobiModel> model, const char* attribute)
      : model_(std::move(model)), attribute_(attribute) {}
  int size() const override;
  int solutionCount() const override;
  std::optional<double> toOptional(const double& value) const override { return DoubleValues::convert(value); }
  double get(int index, int solution) const override;
  void get(const tav::idx::List& list, std::span<double> values, int solution) const override;

 private:
  using DoubleValues = transform::DoubleValues;

  std::weak_ptr<GurobiModel> model_;
  const char* attribute_;
};

}  // namespace grb
