#pragma once

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "grb/callback/callback_context.h"
#include "grb/element_stores.h"
#include "grb/gurobi/model.h"
#include "grb/mip_starts.h"
#include "grb/option/link_options.h"
#include "grb/procedure/outcome.h"
#include "grb/procedure/parameter_file.h"
#include "grb/registry.h"
#include "tav/opt/adder.h"

namespace grb {

// Indicators, and the general constraints behind nonlinear rows and objectives, share one numbering in Gurobi. What
// each of them is: an element of that registry, at that position.
struct GeneralConstraint {
  enum class Kind : std::uint8_t { indicator, nonlinearRow, nonlinearObjective };
  Kind kind;
  int position;
};

// The one record behind a solver. The adders, containers and commands that the solver hands out refer to it, or to its
// model, weakly, so that each of them is safe to use after the solver is gone.
struct Data {
  explicit Data(std::shared_ptr<const Library> library);
  ~Data();

  std::shared_ptr<GurobiModel> model;
  CallbackContext callbacks;  // holds the framework's log and callback objects

  std::mutex modelLock;                    // serialises all changes of the Gurobi model
  OptionSet options;                       // stays as it is when the model starts anew
  ParameterValues beforeParameterFile;     // what to put back when the model starts anew
  ParameterValues beforeProcedure;         // what to put back as soon as the procedure of a solve has ended
  Outcome outcome;                         // of the last solve
  std::atomic<bool> isInterrupted{false};  // since the last solve began

  // Whoever adds an element registers it as soon as Gurobi has taken it, auxiliary ones too.
  Registry variables, linearRows, quadraticRows, sosSets, indicators, nonlinearRows;
  Registry linearObjectives, quadraticObjectives, nonlinearObjectives;
  std::vector<GeneralConstraint> generalConstraints;  // by Gurobi's index
  VariableStores variableStores;
  std::shared_ptr<MipStarts> mipStarts = std::make_shared<MipStarts>();
  std::shared_ptr<RowStores> rowStores;

  // New values that the next solve gives to coefficients, by row and column, to the linear objective, by column, and to
  // right-hand sides, by row.
  std::map<int, std::map<int, double>> pendingCoefficients;
  std::map<int, double> pendingObjective;
  std::map<int, double> pendingSides;

  // One adder per kind, made when first asked for. The pointers tell which part of the model is meant later.
  std::shared_ptr<tav::opt::AbstractVariableAdder> variableAdder;
  std::shared_ptr<tav::opt::AbstractConstraintAdder> linearRowAdder, quadraticRowAdder, nonlinearRowAdder, sosAdder;
  std::shared_ptr<tav::opt::AbstractConstraintAdder> linearObjectiveAdder, quadraticObjectiveAdder,
      nonlinearObjectiveAdder;
  std::shared_ptr<tav::opt::AbstractLinkedConstraintAdder> indicatorAdder;

  std::uint64_t variableSpace() const { return variables.serial(); }
  bool hasObjective() const;

  // Compares Gurobi's count of variables with ours; reading it makes the pending update. To be called under the lock at
  // the head of every block, so that no failing call can discard what earlier blocks added. Throws when elements were
  // lost or added behind our back, or when an earlier block failed in a way that lost some.
  void requireInStep();
  // After a failing add call: whether Gurobi still holds exactly what is registered, so that the block may go on.
  // Otherwise no further block is taken, and the block must let the error go on its way. To be called under the lock;
  // may be called again for the same error.
  bool isInStepAfterError();

  // Registers one linear row that Gurobi has just taken, for those who bring no block of them; returns its position.
  int registerRow(char sense, double side);

  // Forgets basis and points to start from, once Gurobi has them: its own last result is a better start by then.
  void forgetStarts();

  // Forgets all elements, for a model that starts anew.
  void clear();

 private:
  bool holdsAll() const;

  std::string lost_;  // why no further block is taken
};

}  // namespace grb
