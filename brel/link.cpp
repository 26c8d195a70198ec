#include "brel/link.h"

#include <exception>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "brel/host.h"
#include "brel/interrupt_hook.h"
#include "brel/load/loader.h"
#include "brel/load/preferences.h"
#include "brel/load/starts.h"
#include "brel/plugin/plugin.h"
#include "brel/settings/publish.h"
#include "brel/settings/rewrite_settings.h"
#include "brel/settings/settings.h"
#include "brel/watch/watch.h"
#include "tav/opt/quantities.h"
#include "tav/opt/solver_services.h"
#include "tav/opt/tags.h"

namespace brel {
namespace {

// Runs the solver. A search for a conflict that finds none, or a file that cannot be written, ends the solver's part
// with an error, and yet what it has found before is to be read: only a line is left of the error.
void solveAndNote(trpRec* host, tav::opt::AbstractSolver& solver) {
  const auto* services = dynamic_cast<const tav::opt::AbstractSolverServices*>(&solver);
  const auto failure = [services] { return services != nullptr ? services->conflictFailure() : std::string(); };
  const auto lost = [services] { return services != nullptr ? services->lostFile() : std::string(); };
  try {
    solver.solve();
  } catch (const tav::Exception&) {
    if (failure().empty() && lost().empty()) throw;
  }
  if (!lost().empty()) kavo_link_lost_file(host, lost().c_str());
  if (!failure().empty()) kavo_link_note(host, ("there is no conflict (IIS): " + failure()).c_str());
}

// Runs a piece of work for the host; what it raises becomes the host's error.
template <class Work>
std::int32_t guarded(trpRec* host, const Work& work) {
  try {
    work();
    return 0;
  } catch (const std::exception& failure) {
    if (host != nullptr) kavo_link_error(host, failure.what());
  } catch (...) {
    if (host != nullptr) kavo_link_error(host, "an unknown failure in the link");
  }
  return 1;
}

// The plug-ins of one solve, in the order in which the link has switched them on.
class Plugins {
 public:
  explicit Plugins(const LinkDef& definition) {
    for (const Plugin plugin : definition.enabled()) {
      if (auto made = plugin::makePlugin(plugin)) plugins_.push_back(std::move(made));
    }
  }

  void each(void (plugin::AbstractPlugin::*moment)(plugin::Solve&), plugin::Solve& solve) const {
    for (const auto& one : plugins_) ((*one).*moment)(solve);
  }

 private:
  std::vector<std::unique_ptr<plugin::AbstractPlugin>> plugins_;
};

kavo_changes changesOf(const trpRec* host) {
  kavo_changes changes{};
  checkHost(kavo_link_changes(host, &changes));
  return changes;
}

// Which solver this is, as exactly as it can tell.
std::string solverText(tav::opt::AbstractSolver& solver) {
  const auto* services = dynamic_cast<tav::opt::AbstractSolverServices*>(&solver);
  return services ? services->libraryText() : solver.name();
}

// A ray is enough for that. A solver that goes on from an earlier basis may find one first where it would otherwise
// have found that there is no point.
bool isUnbounded(tav::opt::AbstractSolver& solver) {
  const auto facts = solver.makeModelAttributes(tav::opt::tag::kSolver, {});
  return facts->get(tav::opt::ModelAttribute::status).as<int>().get() == KAVO_UNBOUNDED;
}

}  // namespace

// Nothing is shared between links yet that would have to be made before the first or freed after the last.
void Link::initialize() {}
void Link::finalize() {}

Link::Link(std::shared_ptr<tav::opt::AbstractSolver> solver, LinkDef definition)
    : solver_(std::move(solver)), definition_(std::move(definition)) {}

Link::~Link() = default;

std::int32_t Link::readyAPI(trpRec* model) {
  if (model == nullptr) return 1;
  model_ = model;
  return guarded(model_, [this] {
    kavo_link_publish_solver(model_, solverText(*solver_).c_str());
    table_.emplace(model_, *solver_, definition_);
    settings::publish(model_, *table_);
  });
}

std::int32_t Link::callSolver() {
  if (model_ == nullptr || !table_) return 1;
  return guarded(model_, [this] { run(); });
}

// The host tells what has changed when it is asked, so there is nothing to keep in mind.
std::int32_t Link::modifyProblem() { return model_ == nullptr ? 1 : 0; }

void Link::run() {
  const auto log = std::make_shared<HostLog>(model_);
  solver_->setLog(log);
  settings::Given given = settings::check(model_, *table_, *solver_);
  log->writeLine(solverText(*solver_));
  for (const std::string& line : given.skipped) {
    log->writeLine(line);
    kavo_link_note(model_, line.c_str());
  }
  // What cannot be taken is refused before a licence is.
  load::TranslatedModel model = load::translate(model_, *solver_, settings::rewriteOptions(given));
  if (const rewrite::Beyond* beyond = model.sent.beyond()) {
    for (const std::string& note : beyond->notes) kavo_link_note(model_, note.c_str());
  }
  settings::PluginValues values(*table_, given);
  load::Choices choices;
  watch::Watch watch(model_, *solver_, model);
  plugin::Solve solve{model_, *solver_, dynamic_cast<tav::opt::AbstractSolverServices*>(solver_.get()),
                      *log,   *table_,  given,
                      values, model,    choices,
                      watch};
  Plugins plugins(definition_);
  plugins.each(&plugin::AbstractPlugin::prepare, solve);
  if (solve.isDone) {
    loaded_.reset();  // what the host has changed until now is never told again
    return;
  }
  choices.basisUse = settings::wholeNumber(given, "usebasis");
  choices.usesMipStarts = settings::wholeNumber(given, "mipstart").value_or(0) != 0;
  choices.usesHints = settings::wholeNumber(given, "varhint").value_or(0) != 0;
  if (settings::wholeNumber(given, "feasopt").value_or(0) != 0) choices.preferences = load::preferencesOf(model);
  const load::Loaded wanted(model, given, choices);
  const bool goesOn = bring(wanted, solve);
  plugins.each(&plugin::AbstractPlugin::loaded, solve);
  runSolver(*log, solve, goesOn);
  settings::answer(model_, given, *solver_);  // a parameter file read by the solve has its say in them
  plugins.each(&plugin::AbstractPlugin::read, solve);
  plugins.each(&plugin::AbstractPlugin::finish, solve);
  const std::string lost = solve.services != nullptr ? solve.services->traceFailure() : std::string();
  if (!lost.empty()) kavo_link_lost_file(model_, lost.c_str());
  if (wanted.isKeptAfter(solve.result)) loaded_ = wanted;
}

// Whether the solver's model is the host's but for some numbers. Without any difference it is loaded anew: a host that
// solves again wants to see a solve.
bool Link::canGoOn(const std::optional<load::Loaded>& before, const load::Loaded& wanted,
                   const plugin::Solve& solve) const {
  if (!before || solve.services == nullptr || !solver_->hasModel()) return false;
  const kavo_changes changes = changesOf(model_);
  const bool isAny = changes.coefficients + changes.sides + changes.bounds + changes.costs > 0 || changes.constant != 0;
  return changes.structure == 0 && isAny && solve.services->structureIntact() && before->differsInNumbersOnly(wanted);
}

// Into the solver, with the settings of this solve: the model as it is now, or (true) what has changed in it.
bool Link::bring(const load::Loaded& wanted, plugin::Solve& solve) {
  const auto before = std::exchange(loaded_, std::nullopt);
  const bool goesOn = canGoOn(before, wanted, solve);
  setUp(solve.given, goesOn);
  if (goesOn) {
    load::noteUnusedStarts(solve.model, load::startOf(solve.model), solve.choices);
    load::sendChanges(solve.model, changesOf(model_), *solver_, *solve.services);
  } else {
    load::send(solve.model, *solver_, solve.choices);
  }
  return goesOn;
}

// A solver with the settings of this solve, and an empty model unless it goes on with the one that it has.
void Link::setUp(const settings::Given& given, bool goesOn) {
  if (solver_->hasModel()) {
    if (!goesOn) solver_->clear();
  } else {
    settings::applyBeforeSetup(given.settings, *solver_);
    solver_->setup();
  }
  settings::withdraw(inForce_, given.settings, *table_, *solver_);
  inForce_.clear();
  for (const settings::Checked& setting : given.settings) inForce_.emplace_back(setting.row->name());
  settings::apply(given.settings, *solver_);
}

void Link::runSolver(HostLog& log, plugin::Solve& solve, bool goesOn) {
  const InterruptHook hook(model_, *solver_);
  solve.watch.begin();
  log.onWrite([&solve] { solve.watch.logged(); });
  try {
    solveAndNote(model_, *solver_);
    if (goesOn && isUnbounded(*solver_)) {
      setUp(solve.given, false);
      load::send(solve.model, *solver_, solve.choices);
      solveAndNote(model_, *solver_);
    }
  } catch (...) {
    log.onWrite({});
    solve.watch.end(false);
    throw;
  }
  log.onWrite({});
  solve.watch.end(true);
}

}  // namespace brel
