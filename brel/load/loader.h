#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "brel/rewrite/rewriter.h"
#include "brel/rewrite/solver_model.h"
#include "brel/rewrite/trail.h"
#include "brel/user_model.h"
#include "tav/opt/solver.h"

namespace brel::load {

// The host's model as the solver takes it, how it came about, and, once it is sent, the adders that took it in, by
// which results are asked for.
struct TranslatedModel {
  UserModel user;
  rewrite::SolverModel sent;
  rewrite::Trail trail;
  std::shared_ptr<const tav::opt::AbstractAdder> rowAdder, quadraticRowAdder, objectiveAdder;
};

// Rewrites the host's model. Asks the solver for nothing but its variable space, so that a model that cannot be taken
// is refused before a licence is. Raises SupportException that names the element.
TranslatedModel translate(trpRec* host, tav::opt::AbstractSolver& solver, rewrite::RewriteOptions options);

// Who may give way, and how gladly, in a relaxation: a value per column that is sent and per row of the user's. NaN:
// none was given. Empty: none at all.
struct Preferences {
  std::vector<double> column, row;
};

// What is up to the settings and the plug-ins when a model is loaded.
struct Choices {
  std::optional<Preferences> preferences;  // none: the model is not relaxed
  std::optional<int> basisUse;             // the setting usebasis, if it is given
  bool usesMipStarts = false;
  bool usesHints = false;  // the start values of the host

  bool allObjectives = false;                            // every linear objective, or only the one that is solved
  std::vector<double> objectiveAbsTol, objectiveRelTol;  // per objective, as far as given; else the model's own
  std::vector<std::vector<double>> mipStarts;            // per user column, behind those of the host; NaN: not given
};

// Sends the model block by block: variables, linear rows, quadratic rows, ordered sets, indicators, nonlinear rows, the
// chosen objective. The solver must have an empty model. Raises SupportException, for a kind of element that the solver
// does not take before the first block, and what the solver raises.
void send(TranslatedModel& model, tav::opt::AbstractSolver& solver, const Choices& choices);

}  // namespace brel::load
