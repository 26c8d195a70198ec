#pragma once

#include <memory>

#include "grb/data.h"
#include "tav/opt/solver.h"
#include "tav/opt/solver_services.h"

namespace grb {

// The Gurobi Optimizer as the framework sees it: a thin handle on the shared record.
class Solver : public tav::opt::AbstractSolver, public tav::opt::AbstractSolverServices {
 public:
  // With the Gurobi library that loadLibrary() finds (throws LoadError), or with a given one. The solver itself calls
  // nothing in it; the model's wrapper makes the environment, which takes no licence yet.
  Solver();
  explicit Solver(std::shared_ptr<const Library> library);

  std::string name() const override { return "Gurobi"; }
  std::pair<std::int32_t, bool> capabilities() const override { return {1024, true}; }
  std::string shortName() const override { return "grb"; }
  bool hasModel() const override { return data_->model->hasModel(); }
  bool setup() override;
  void clear() override;
  bool setLog(std::shared_ptr<tav::opt::AbstractLog> log) override;
  std::shared_ptr<tav::opt::AbstractLog> log() const override { return data_->callbacks.log; }
  bool setCallback(std::shared_ptr<tav::opt::AbstractCallback> callback) override;
  std::shared_ptr<void> callbackData() const override { return {}; }
  bool addContext(std::string_view tag, int index, tav::opt::ContextEntry entry) override;

  std::shared_ptr<tav::opt::AbstractVariableAdder> makeVariableAdder(std::string_view domain,
                                                                     std::optional<std::string_view> function) override;
  std::shared_ptr<tav::opt::AbstractConstraintAdder> makeConstraintAdder(std::string_view domain,
                                                                         std::string_view function) override;
  std::shared_ptr<tav::opt::AbstractLinkedConstraintAdder> makeLinkAdder(std::string_view domain,
                                                                         std::string_view function,
                                                                         std::string_view link) override;
  tav::attr::ContainerDict makeVariableContainers(const tav::opt::Context& context) override;
  tav::opt::ContainerPair makeConstraintContainers(const std::shared_ptr<const tav::opt::AbstractAdder>& part,
                                                   std::optional<std::string_view> further,
                                                   const tav::opt::Context& context) override;
  tav::opt::ContainerPair makeEmptyContainers() override { return {}; }
  std::shared_ptr<tav::attr::AbstractItemDict> makeModelAttributes(std::string_view tag,
                                                                   const tav::opt::Context& context) override;
  std::shared_ptr<tav::opt::AbstractCommand> makeCommand(std::string_view tag, int index,
                                                         std::optional<std::string_view> argument) override;

  tav::opt::Termination solve() override;
  void interrupt() override;

  std::string libraryText() const override;
  tav::opt::StopReason stopReason() const override;
  bool structureIntact() const override { return !data_->model->relaxed() && !data_->model->fixed(); }
  bool isSearch() const override { return data_->model->getIntAttr("IsMIP") != 0; }
  std::optional<tav::opt::Conflict> conflict() const override { return data_->outcome.conflict; }
  std::string conflictFailure() const override { return data_->outcome.conflictFailure; }
  std::string lostFile() const override { return data_->outcome.lostFile; }
  std::string traceFailure() const override;
  bool isRelaxationCutShort() const override { return data_->outcome.isRelaxationCutShort; }
  std::optional<double> relaxation() const override;
  std::optional<double> conditionNumber(bool exact) const override;
  void queueCoefficients(int row, const std::vector<int>& columns, const std::vector<double>& values) override;
  void queueObjective(const std::vector<int>& columns, const std::vector<double>& values) override;
  void queueSide(int row, double value) override;
  std::string settingGroup(int key) const override;
  bool isSetBeforeSetup(int key) const override;
  std::size_t longestText(int key) const override;
  bool knowsParameter(std::string_view name) const override;

 private:
  std::shared_ptr<Data> data_;
};

}  // namespace grb
