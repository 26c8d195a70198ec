#include "grb/solver.h"

#include <cmath>
#include <limits>

#include "grb/adder/indic_adder.h"
#include "grb/adder/lin_con_adder.h"
#include "grb/adder/lin_obj_adder.h"
#include "grb/adder/quad_con_adder.h"
#include "grb/adder/quad_obj_adder.h"
#include "grb/adder/sos_adder.h"
#include "grb/adder/var_adder.h"
#include "grb/gurobi/constants.h"
#include "grb/gurobi/trace.h"
#include "grb/nonlinear/nonlin_con_adder.h"
#include "grb/nonlinear/nonlin_obj_adder.h"
#include "grb/option/catalogue.h"
#include "grb/procedure/fix_command.h"
#include "grb/procedure/relaxation.h"
#include "grb/procedure/solve.h"
#include "grb/result/lin_con_domain.h"
#include "grb/result/model_attributes.h"
#include "grb/result/obj_domain.h"
#include "grb/result/quad_con_domain.h"
#include "grb/result/solution_status.h"
#include "grb/result/std_model_attributes.h"
#include "grb/result/var_domain.h"
#include "grb/setting_group.h"
#include "tav/opt/tags.h"

namespace grb {
namespace {

namespace tag = tav::opt::tag;

// The adder of a kind, made when first asked for and the same one ever after.
template <class A, class Slot>
Slot& sharedAdder(Slot& slot, const std::shared_ptr<Data>& data) {
  if (!slot) slot = std::make_shared<A>(data);
  return slot;
}

void requireIndex(const char* what, int index, int count) {
  if (index < 0) throw tav::CheckException::failedGreaterOrEqualTo(what, index, {"0", 0});
  if (index >= count) throw tav::CheckException::failedLessThan(what, index, {"count", count});
}

void requireFinite(double value) {
  if (!std::isfinite(value)) throw tav::CheckException::failedTrue("isfinite(value)");
}

void requireChanges(const std::vector<int>& columns, const std::vector<double>& values, int count) {
  if (columns.size() != values.size()) {
    throw tav::CheckException::failedEqualTo("values.size()", values.size(), {"columns.size()", columns.size()});
  }
  for (const int column : columns) requireIndex("column", column, count);
  for (const double value : values) requireFinite(value);
}

void note(const std::vector<int>& columns, const std::vector<double>& values, std::map<int, double>& changes) {
  for (std::size_t k = 0; k < columns.size(); ++k) changes[columns[k]] = values[k];
}

}  // namespace

Solver::Solver() : Solver(loadLibrary()) {}

Solver::Solver(std::shared_ptr<const Library> library) : data_(std::make_shared<Data>(std::move(library))) {}

bool Solver::setup() {
  if (!hasModel()) data_->model->start();
  return true;
}

void Solver::clear() {
  data_->model->clear();
  data_->clear();
  putBack(*data_->model, data_->beforeProcedure);
  putBack(*data_->model, data_->beforeParameterFile);
}

bool Solver::setLog(std::shared_ptr<tav::opt::AbstractLog> log) {
  if (!log) return false;
  data_->callbacks.log = std::move(log);
  return true;
}

bool Solver::setCallback(std::shared_ptr<tav::opt::AbstractCallback> callback) {
  if (!callback) return false;
  data_->callbacks.handler = std::move(callback);
  return true;
}

bool Solver::addContext(std::string_view tag, int index, tav::opt::ContextEntry entry) {
  return tag == tag::kContext && data_->callbacks.subscribe(index, entry);
}

std::shared_ptr<tav::opt::AbstractVariableAdder> Solver::makeVariableAdder(std::string_view domain,
                                                                           std::optional<std::string_view> function) {
  if (domain != tag::kIntervalDomain || function) return {};
  return sharedAdder<VarAdder>(data_->variableAdder, data_);
}

std::shared_ptr<tav::opt::AbstractConstraintAdder> Solver::makeConstraintAdder(std::string_view domain,
                                                                               std::string_view function) {
  if (domain == tag::kStaticBoundedDomain) {
    if (function == tag::kLinearFunction) return sharedAdder<LinConAdder>(data_->linearRowAdder, data_);
    if (function == tag::kQuadraticFunction) return sharedAdder<QuadConAdder>(data_->quadraticRowAdder, data_);
    if (function == tag::kIdentityFunction) return sharedAdder<NonlinConAdder>(data_->nonlinearRowAdder, data_);
  }
  if (domain == tag::kSenseDomain) {
    if (function == tag::kLinearFunction) return sharedAdder<LinObjAdder>(data_->linearObjectiveAdder, data_);
    if (function == tag::kQuadraticFunction) return sharedAdder<QuadObjAdder>(data_->quadraticObjectiveAdder, data_);
    if (function == tag::kIdentityFunction) return sharedAdder<NonlinObjAdder>(data_->nonlinearObjectiveAdder, data_);
  }
  if (domain == tag::kSosDomain && function == tag::kIdentityFunction) {
    return sharedAdder<SOSAdder>(data_->sosAdder, data_);
  }
  return {};
}

std::shared_ptr<tav::opt::AbstractLinkedConstraintAdder> Solver::makeLinkAdder(std::string_view domain,
                                                                               std::string_view function,
                                                                               std::string_view link) {
  const bool isIndicator =
      domain == tag::kStaticBoundedDomain && function == tag::kLinearFunction && link == tag::kConstraintLink;
  if (!isIndicator) return {};
  return sharedAdder<IndicAdder>(data_->indicatorAdder, data_);
}

tav::attr::ContainerDict Solver::makeVariableContainers(const tav::opt::Context& context) {
  return std::make_shared<VarDomain>(*data_, eventOf(context));
}

tav::opt::ContainerPair Solver::makeConstraintContainers(const std::shared_ptr<const tav::opt::AbstractAdder>& part,
                                                         std::optional<std::string_view> further,
                                                         const tav::opt::Context& context) {
  if (!part || further) return {};
  const auto event = eventOf(context);
  if (part == data_->linearRowAdder) {
    return {std::make_shared<LinConDomain>(*data_, event), std::make_shared<LinConFunction>(*data_, event)};
  }
  if (part == data_->quadraticRowAdder) return {std::make_shared<QuadConDomain>(*data_, event), {}};
  const bool isObjective = part == data_->linearObjectiveAdder || part == data_->quadraticObjectiveAdder ||
                           part == data_->nonlinearObjectiveAdder;
  if (isObjective) {
    return {std::make_shared<ObjDomain>(*data_, event), std::make_shared<LinObjFunction>(*data_, event)};
  }
  return {};
}

std::shared_ptr<tav::attr::AbstractItemDict> Solver::makeModelAttributes(std::string_view tag,
                                                                         const tav::opt::Context& context) {
  if (tag == tag::kSolver) return std::make_shared<StdModelAttributes>(*data_, eventOf(context));
  if (tag == shortName()) return std::make_shared<ModelAttributes>(data_->model, data_->options);
  return {};
}

std::shared_ptr<tav::opt::AbstractCommand> Solver::makeCommand(std::string_view tag, int index,
                                                               std::optional<std::string_view> argument) {
  if (tag != tag::kCommand || index != 0 || argument) return {};
  return std::make_shared<FixNonContinuousCommand>(data_->model);
}

tav::opt::Termination Solver::solve() { return grb::solve(*data_); }

void Solver::interrupt() {
  data_->isInterrupted = true;
  data_->model->terminate();
}

std::string Solver::libraryText() const { return data_->model->library()->text(); }

std::string Solver::traceFailure() const { return grb::traceFailure(); }

tav::opt::StopReason Solver::stopReason() const {
  const bool hasSolved = hasModel() && data_->outcome.hasSolved;
  if (!hasSolved) {
    const bool isStopped = data_->outcome.isCutShort && data_->isInterrupted;
    return isStopped ? tav::opt::StopReason::interrupted : tav::opt::StopReason::notRun;
  }
  const int status = data_->outcome.status.value_or(data_->model->getIntAttr("Status"));
  if (data_->outcome.isRelaxationCutShort) return grb::stopOfRelaxation(*data_, status);
  return grb::stopReason(status);
}

std::optional<double> Solver::relaxation() const {
  const bool isObjective =
      data_->outcome.relaxationIsObjective && data_->model->relaxed() && data_->model->isAttrAvailable("ObjVal");
  return isObjective ? data_->model->getDblAttr("ObjVal") : data_->outcome.relaxation;
}

std::optional<double> Solver::conditionNumber(bool exact) const {
  return exact ? data_->outcome.exactCondition : data_->outcome.condition;
}

void Solver::queueCoefficients(int row, const std::vector<int>& columns, const std::vector<double>& values) {
  requireIndex("row", row, data_->linearRows.count());
  requireChanges(columns, values, data_->variables.count());
  if (!columns.empty()) note(columns, values, data_->pendingCoefficients[row]);
}

void Solver::queueObjective(const std::vector<int>& columns, const std::vector<double>& values) {
  requireChanges(columns, values, data_->variables.count());
  note(columns, values, data_->pendingObjective);
}

void Solver::queueSide(int row, double value) {
  requireIndex("row", row, data_->linearRows.count());
  requireFinite(value);
  data_->pendingSides[row] = value;
}

std::string Solver::settingGroup(int key) const { return grb::settingGroup(key); }

// Gurobi refuses to begin a recording once its environment is started.
bool Solver::isSetBeforeSetup(int key) const {
  const auto entry = entryOf(key);
  return entry && entry->info->name() == "Record";
}

// Gurobi cuts a longer text of a parameter without a word; the link's own file names have no limit.
std::size_t Solver::longestText(int key) const {
  const auto entry = entryOf(key);
  const bool isParameter = entry && entry->kind == EntryKind::stringParameter;
  return isParameter ? kStringParamSize - 1 : std::numeric_limits<std::size_t>::max();
}

bool Solver::knowsParameter(std::string_view name) const {
  return data_->model->getParamType(std::string(name).c_str()) != paramtype::kUnknown;
}

}  // namespace grb
