#include <string>

#include "brel/host.h"
#include "brel/plugin/plugins.h"
#include "brel/result/absence.h"
#include "brel/result/reader.h"
#include "brel/rewrite/own_expressions.h"
#include "tav/opt/quantities.h"
#include "tav/opt/tags.h"

namespace brel::plugin {
namespace {

// How far numbers of a linear model may move before its optimal basis changes.
class Ranges : public AbstractPlugin {
 public:
  void read(Solve& solve) override { whyNone_ = isWanted(solve) ? whyNone(solve) : ""; }

  // A solver may solve once more for them, under the limits in force, and have nothing else to tell from then on.
  void finish(Solve& solve) override {
    if (!isWanted(solve)) return;
    if (whyNone_.empty()) whyNone_ = result::Reader(solve.host, solve.solver, solve.model).readRanges();
    if (!whyNone_.empty()) kavo_link_note(solve.host, ("no ranges: " + whyNone_).c_str());
  }

 private:
  static bool isWanted(const Solve& solve) { return solve.values.whole(settings::PluginAttribute::ranges) != 0; }

  static std::string whyNone(const Solve& solve) {
    if (solve.services != nullptr && !solve.services->structureIntact()) return "a feasible relaxation was solved";
    const auto facts = solve.solver.makeModelAttributes(tav::opt::tag::kSolver, {});
    const auto status = facts->get(tav::opt::ModelAttribute::status).as<int>();
    if (status.get() != KAVO_OPTIMAL) return "the solve did not end optimal";
    if (std::string parts = result::discreteParts(solve.model); !parts.empty()) return parts;
    if (solve.choices.allObjectives) return "several objectives";
    if (solve.model.user.columns.count == 0) return "there are no variables";
    const bool isAllLinear = isLinear(solve.model.sent.beyond()) && rewrite::areExpressionsLinear(solve.model.user);
    return isAllLinear ? "" : "the model is not linear";
  }

  // What is sent. An expression that is linear only as long as the bounds stay where they are (|x|, x >= 0) is sent as
  // such, and yet the ranges would be wrong. Solvers that give ranges of quadratic models are not always right, either.
  static bool isLinear(const rewrite::Beyond* beyond) {
    using Kind = rewrite::BeyondObjective::Kind;
    if (beyond == nullptr) return true;
    const bool hasLinearObjective =
        beyond->objective.kind == Kind::asTheUsers || beyond->objective.kind == Kind::linear;
    return hasLinearObjective && beyond->quadratic.heads.size() == 0 && beyond->nonlinear.heads.size() == 0 &&
           beyond->indicator.heads.size() == 0 && beyond->sets.type.empty();
  }

  std::string whyNone_;
};

}  // namespace

std::unique_ptr<AbstractPlugin> ranges() { return std::make_unique<Ranges>(); }

}  // namespace brel::plugin
