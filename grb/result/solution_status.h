#pragma once

#include <memory>
#include <optional>

#include "grb/gurobi/model.h"
#include "grb/result/callback_values.h"
#include "tav/attr/item.h"
#include "tav/opt/codes.h"

namespace grb {

// Gurobi's "Status" as the framework numbers it; limits and suboptimal stops are `unknown`.
tav::opt::SolutionStatus solutionStatus(int gurobiStatus);
// Why a solve with that status ended, and as the solver's return code.
tav::opt::StopReason stopReason(int gurobiStatus);
tav::opt::Termination termination(int gurobiStatus);

// The status of the last solve; its number of solutions is Gurobi's "SolCount". Reads 0 and counts 0 when the model is
// gone.
class SolutionStatus : public tav::attr::AbstractItem<int> {
 public:
  // instead: Gurobi's status of a solve whose answer Gurobi no longer holds; there are no solutions then.
  explicit SolutionStatus(std::weak_ptr<GurobiModel> model, std::optional<int> instead = std::nullopt)
      : model_(std::move(model)), instead_(instead) {}
  int solutionCount() const override;
  int get(int solution) const override;
  std::vector<int> getAll() const override { return {get(0)}; }

 private:
  std::weak_ptr<GurobiModel> model_;
  std::optional<int> instead_;
};

// The status inside a running solve: unknown. The number of solutions is told at nodes of the search tree only.
class CallbackSolutionStatus : public tav::attr::AbstractItem<int> {
 public:
  explicit CallbackSolutionStatus(CallbackSource source) : source_(std::move(source)) {}
  int solutionCount() const override;
  int get(int /*solution*/) const override { return static_cast<int>(tav::opt::SolutionStatus::unknown); }
  std::vector<int> getAll() const override { return {get(0)}; }

 private:
  CallbackSource source_;
};

}  // namespace grb
