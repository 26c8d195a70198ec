#include <fmt/format.h>

#include <optional>
#include <string>

#include "brel/host.h"
#include "brel/interrupt_hook.h"
#include "brel/plugin/fixed_options.h"
#include "brel/plugin/plugins.h"
#include "brel/plugin/searched.h"
#include "brel/result/reader.h"
#include "tav/opt/quantities.h"
#include "tav/opt/tags.h"
#include "tav/util/exception.h"

namespace brel::plugin {
namespace {

using Attribute = settings::PluginAttribute;

void note(trpRec* host, const std::string& line) { kavo_link_note(host, line.c_str()); }

// Solves a MIP once more with what is not continuous fixed, for the duals that a MIP does not have.
class FixedSolve : public AbstractPlugin {
 public:
  void prepare(Solve& solve) override {
    const std::string file = solve.values.text(Attribute::fixedOptions);
    if (solve.values.whole(Attribute::solveFixed) == 0) {
      if (!file.empty()) note(solve.host, "fixoptfile has no effect without solvefixed 1");
      return;
    }
    options_.emplace(file, solve.table, solve.solver);
    for (const std::string& line : options_->skipped()) note(solve.host, line);
  }

  // After all others have read what the solve of the user's model has found: the conversion throws it away.
  void finish(Solve& solve) override {
    if (!options_) return;
    const auto command = solve.solver.makeCommand(tav::opt::tag::kCommand, 0, std::nullopt);
    const std::string why = command ? whyNot(solve) : "the solver cannot fix a model";
    if (!why.empty()) return note(solve.host, "no fixed model was solved: " + why);
    result::Reader reader(solve.host, solve.solver, solve.model);
    const Searched searched(solve.model.user, reader);
    if (searched.isInfinite()) return note(solve.host, "no fixed model was solved: there is no point");
    try {
      command->run();
      solveFixed(solve);
    } catch (const tav::Exception& failure) {
      // what the search has found is not to be lost for that
      return note(solve.host, fmt::format("the fixed model could not be solved: {}", failure.what()));
    }
    report(solve, searched);
  }

 private:
  static std::string whyNot(const Solve& solve) {
    using tav::opt::StopReason;
    if (solve.services == nullptr) return "the solver does not tell enough";
    if (solve.services->stopReason() == StopReason::notRun) return "nothing was solved";
    if (!solve.services->structureIntact()) return "the model was relaxed";
    if (solve.choices.allObjectives) return "several objectives have no duals";
    if (!solve.services->isSearch()) return "the model has no integer variables, and the solve has its duals";
    const auto facts = solve.solver.makeModelAttributes(tav::opt::tag::kSolver, {});
    if (facts->get(tav::opt::ModelAttribute::status).as<int>().solutionCount() == 0) return "there is no point";
    const bool isStopped = kavo_link_stop_requested(solve.host) != 0 && !solve.watch.isStoppedByRule();
    return isStopped ? "the search was interrupted" : "";
  }

  void solveFixed(Solve& solve) const {
    const InterruptHook hook(solve.host, solve.solver);
    solve.log.writeLine("Solving the fixed model.");
    options_->enter(solve.given, solve.solver);
    try {
      solve.solver.solve();
    } catch (...) {
      options_->leave(solve.given, solve.solver);
      throw;
    }
    options_->leave(solve.given, solve.solver);
  }

  static void report(Solve& solve, const Searched& searched) {
    result::Reader reader(solve.host, solve.solver, solve.model, KAVO_OF_FIXED);
    const kavo_finish found = reader.facts();
    if (found.solutions > 0) {
      const std::string why = searched.whyNot(found, reader.columns());
      if (!why.empty()) {
        return note(solve.host,
                    "the fixed model is not the search's with its integers fixed, so nothing of it is given: " + why);
      }
      if (searched.isImproved(found))
        note(solve.host, "the fixed model has a better objective than the point of the search");
    }
    reader.read(found.solutions > 0 ? result::Extent::all : result::Extent::basis);
    checkHost(kavo_link_finish_fixed(solve.host, &found));
    if (found.solutions == 0) {
      note(solve.host, "the fixed model has no point, so there are no duals");
    } else if (!reader.hasDuals()) {
      note(solve.host, "the fixed model has no duals; those of quadratic rows need QCPDual 1");
    }
  }

  std::optional<FixedOptions> options_;  // none when it is off
};

}  // namespace

std::unique_ptr<AbstractPlugin> fixedSolve() { return std::make_unique<FixedSolve>(); }

}  // namespace brel::plugin
