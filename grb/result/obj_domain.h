#pragma once

#include <memory>

#include "grb/data.h"
#include "grb/result/callback_values.h"
#include "grb/result/model_view.h"

namespace grb {

// How a view of objectives reads values: of one objective, or of several.
inline constexpr int kSingleObjectiveMode = 0;
inline constexpr int kMultiObjectiveMode = 4;

// Quantities of objectives (tav::opt::ObjectiveQuantity): of the last solve, or in an event of a running one the best
// value and bound so far. The ranges of the coefficients have a value per variable.
class ObjDomain : public QuantityView {
 public:
  ObjDomain(const Data& data, std::optional<Event> event);

 protected:
  std::span<const Quantity> provided() const override;
  tav::attr::BaseContainer make(int key) const override;

 private:
  std::weak_ptr<GurobiModel> model_;
  CallbackSource source_;
  int mode_;
  std::optional<Event> event_;
};

// The value of each objective in each solution.
class ObjPrimalSolutions : public tav::attr::AbstractContainer<double> {
 public:
  ObjPrimalSolutions(std::weak_ptr<GurobiModel> model, int mode) : model_(std::move(model)), mode_(mode) {}
  int size() const override;
  int solutionCount() const override;
  bool hasSolution(int solution) const override { return solution >= 0 && solution < solutionCount(); }
  // index: number of the objective.
  double get(int index, int solution) const override;
  void get(const tav::idx::List& list, std::span<double> values, int solution) const override;

 private:
  std::weak_ptr<GurobiModel> model_;
  int mode_;
};

// The coefficients of the linear terms of each objective as it was given, whatever its sense: value set k has a value
// per variable for objective k.
class LinObjSenseLinearTerms : public tav::attr::AbstractContainer<double> {
 public:
  explicit LinObjSenseLinearTerms(std::weak_ptr<GurobiModel> model) : model_(std::move(model)) {}
  int size() const override;
  int solutionCount() const override;
  bool hasSolution(int solution) const override { return solution >= 0 && solution < solutionCount(); }
  double get(int index, int solution) const override;
  void get(const tav::idx::List& list, std::span<double> values, int solution) const override;

 private:
  std::weak_ptr<GurobiModel> model_;
};

// The linear objective: the constant, as a container of one element, and the coefficients.
class LinObjFunction : public ModelView {
 public:
  LinObjFunction(const Data& data, std::optional<Event> event);

 protected:
  tav::attr::BaseContainer make(int key) const override;
};

}  // namespace grb
