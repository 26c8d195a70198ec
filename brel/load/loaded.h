#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "brel/load/loader.h"
#include "brel/settings/settings.h"
#include "kavo/link.h"
#include "tav/opt/solver_services.h"

namespace brel::load {

// What a solver's model was loaded from: enough to tell, when the host solves again, whether the solver may go on from
// there with new numbers. Holds nothing of the host's.
class Loaded {
 public:
  // The settings and choices are those of the solve for which the model was sent.
  Loaded(const TranslatedModel& model, const settings::Given& given, const Choices& choices);

  // Whether what was loaded and this differ in nothing but numbers of linear rows, bounds and the linear objective, the
  // kinds of rows (by which sides they have) being the same. A model that rules have reshaped beyond linear rows, new
  // starts, priorities or preferences, and settings that have a say in how a model is loaded, do not; nor does a model
  // with discrete parts under any other settings, as a search that is asked again goes on under the new ones.
  bool differsInNumbersOnly(const Loaded& later) const;
  // Whether a solve that ended so has left nothing behind that could be mistaken for an answer of the next: a solver
  // takes up a search that was stopped, or found to be unbounded, where it was, whatever has become of the settings.
  bool isKeptAfter(const kavo_finish& finish) const;

 private:
  enum class RowKind : std::uint8_t { free, lower, upper, equal, range };

  bool isPlain_;              // linear rows and one linear objective, nothing relaxed
  bool readsParameters_;      // a file of parameters was read, which is undone when a model is loaded anew
  std::optional<int> names_;  // the setting
  bool isDiscrete_;
  std::uint64_t settings_;  // a hash of all of them
  std::size_t columns_;
  int objective_ = 0;  // its number, 0: none
  int sense_ = 0;
  std::vector<RowKind> rows_;
  std::uint64_t starts_;  // a hash of everything that a solve is started with
};

// Gives the solver the new numbers of a model that it holds in its earlier form. The model must differ from that in
// numbers only; `changes` says in which.
void sendChanges(TranslatedModel& model, const kavo_changes& changes, tav::opt::AbstractSolver& solver,
                 tav::opt::AbstractSolverServices& services);

}  // namespace brel::load
