#pragma once

#include <memory>

#include "grb/gurobi/model.h"
#include "tav/opt/command.h"

namespace grb {

// Turns the solved model into its fixed version: integer variables fixed at their values, everything continuous.
class FixNonContinuousCommand : public tav::opt::AbstractCommand {
 public:
  explicit FixNonContinuousCommand(std::weak_ptr<GurobiModel> model) : model_(std::move(model)) {}
  // False when the model is gone or has been converted before.
  bool canRun() const override;
  void run() override;

 private:
  std::weak_ptr<GurobiModel> model_;
};

}  // namespace grb
