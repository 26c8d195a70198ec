#pragma once

#include <array>
#include <optional>
#include <span>
#include <vector>

#include "brel/load/loader.h"
#include "brel/rewrite/objective_function.h"
#include "tav/attr/container.h"
#include "tav/attr/item.h"
#include "tav/opt/solver.h"

namespace brel::watch {

// The events of a running search (tav::opt::ContextEntry), as they are subscribed to.
inline constexpr int kNodeEvent = 0, kPointEvent = 2;

// What the solver tells of its search, in terms of the user's model. Made when the model is loaded.
class Search {
 public:
  Search(tav::opt::AbstractSolver& solver, const load::TranslatedModel& model);

  // NaN: not known.
  struct Facts {
    double nodes, best, bound;
  };
  // During an event of that kind only: the nodes so far, and what was known before this event. Of a search that is not
  // in the user's model the nodes alone.
  Facts at(int event);
  // When the solver has returned: what it holds; of several objectives the value of the chosen one at its point.
  // Nothing is known when what was solved is not the user's model.
  Facts atEnd();

  // During an event kPointEvent only: the values of the user's columns, valid until the next call; empty when the
  // search is not in the user's model but in a relaxation of it, or in another one that is tuned.
  std::span<const double> newPoint();
  // The user's objective there; of several the one that is chosen, 0 without any.
  double objectiveAt(std::span<const double> point) const { return objective_ ? objective_->at(point) : 0; }
  bool isMaximized() const { return isMaximized_; }

 private:
  struct Sources {
    tav::attr::Item<unsigned long long> nodes;
    tav::attr::Container<double> best, bound;
  };
  Sources sourcesIn(const tav::opt::Context& context) const;
  Facts read(const Sources& sources) const;
  bool isInUsersModel() const { return static_cast<std::size_t>(point_.size()) == variables_; }

  tav::opt::AbstractSolver& solver_;
  const load::TranslatedModel& model_;
  std::optional<rewrite::ObjectiveFunction> objective_;
  bool isMaximized_;
  bool hasOneObjective_;         // otherwise bounds are those of whichever objective is the solver's turn
  std::size_t variables_;        // of the solver's model
  std::optional<bool> isUsers_;  // whether the search is, by its first event: asking costs as much as the rest
  Sources atNode_, atPoint_;
  tav::attr::Container<double> point_;
  std::vector<double> values_;  // of all the solver's variables
};

}  // namespace brel::watch
