#include "brel/watch/running.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "tav/opt/tags.h"

namespace brel::watch {
namespace {

constexpr std::chrono::milliseconds kTickEvery{100}, kStopEvery{20};
constexpr double kRounding = 1e-12;  // relative

// The relative gap, |incumbent - bound| / |incumbent|.
double gapOf(double incumbent, double bound) {
  const double distance = std::abs(incumbent - bound);
  return distance == 0 ? 0 : distance / std::abs(incumbent);
}

}  // namespace

// What the solver holds. It outlives the solve there, since a solver does not give a callback back, and is silent then.
class Running::Forwarder : public tav::opt::AbstractCallback {
 public:
  void setTarget(Running* target) { target_ = target; }
  void notify(const tav::opt::ContextEntry& entry) override {
    if (target_ != nullptr) target_->onEvent(entry.kind);
  }

 private:
  Running* target_ = nullptr;
};

Running::Running(trpRec* host, tav::opt::AbstractSolver& solver, const load::TranslatedModel& model,
                 std::vector<std::shared_ptr<Listener>> listeners)
    : host_(host),
      solver_(solver),
      search_(solver, model),
      listeners_(std::move(listeners)),
      forwarder_(std::make_shared<Forwarder>()) {
  solver_.setCallback(forwarder_);
  for (const int kind : {kNodeEvent, kPointEvent}) solver_.addContext(tav::opt::tag::kContext, kind, {kind, 0});
  ticking_ = std::make_unique<Ticking>(kTickEvery, [this] { return tick(); });
  forwarder_->setTarget(this);
}

Running::~Running() {
  ticking_.reset();
  forwarder_->setTarget(nullptr);
}

void Running::end(bool hasSolved) {
  ticking_.reset();
  forwarder_->setTarget(nullptr);
  if (hasSolved) {
    const Search::Facts facts = search_.atEnd();
    const std::lock_guard lock(mutex_);
    note(facts);
    if (!std::isnan(facts.best)) now_.incumbent = facts.best;
  }
  {
    const std::lock_guard lock(mutex_);
    tell(Reason::end);
  }
  flushSaid();
  if (failure_) std::rethrow_exception(failure_);
}

void Running::logged() {
  {
    const std::lock_guard lock(mutex_);
    tell(Reason::tick);
  }
  flushSaid();
}

void Running::stop() {
  isStopping_ = true;
  solver_.interrupt();
}

// On the thread that solves, as all but `tick`.
void Running::onEvent(int kind) {
  const Search::Facts facts = search_.at(kind);
  if (kind == kPointEvent) {
    onPoint(facts);
  } else {
    const std::lock_guard lock(mutex_);
    note(facts);
    if (now_.solutions == 0) now_.incumbent = facts.best;
    settleBound();
    tell(Reason::node);
  }
  flushSaid();
}

void Running::onPoint(const Search::Facts& facts) {
  const auto point = search_.newPoint();
  const double objective = point.empty() ? Progress::kNone : search_.objectiveAt(point);
  const std::lock_guard lock(mutex_);
  note(facts);
  const bool isNew = isBetter(objective);
  if (isNew) now_.incumbent = objective;
  settleBound();
  if (!isNew) return tell(Reason::tick);
  now_.solutions += 1;
  now_.point = point;
  tell(Reason::incumbent);
  now_.point = {};
}

std::chrono::milliseconds Running::tick() {
  if (isStopping_) solver_.interrupt();
  const std::lock_guard lock(mutex_);
  tell(Reason::tick);
  return isStopping_ ? kStopEvery : kTickEvery;
}

// Solvers tell of points that are no better, too, and of the same value again with other rounding errors.
bool Running::isBetter(double objective) const {
  if (now_.solutions == 0) return !std::isnan(objective);
  const double gain = search_.isMaximized() ? objective - now_.incumbent : now_.incumbent - objective;
  return gain > kRounding * std::max(1.0, std::abs(now_.incumbent));
}

void Running::note(const Search::Facts& facts) {
  if (!std::isnan(facts.nodes)) now_.nodes = facts.nodes;
  if (!std::isnan(facts.bound)) now_.bound = facts.bound;
}

// Once the optimum is proven, a search for further points tells what bounds those.
void Running::settleBound() {
  const double gain = search_.isMaximized() ? now_.incumbent - now_.bound : now_.bound - now_.incumbent;
  if (gain > 0) now_.bound = now_.incumbent;
}

void Running::tell(Reason reason) {
  now_.reason = reason;
  now_.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin_).count();
  now_.gap = gapOf(now_.incumbent, now_.bound);
  for (auto& listener : listeners_) {
    if (listener) tellOne(listener);
  }
}

void Running::tellOne(std::shared_ptr<Listener>& listener) {
  try {
    listener->hear(now_);
  } catch (...) {
    if (!failure_) failure_ = std::current_exception();
    listener.reset();
    stop();
  }
}

void Running::flushSaid() {
  std::vector<std::string> lines;
  {
    const std::lock_guard lock(mutex_);
    lines.swap(said_);
  }
  for (std::string& line : lines) {
    line += '\n';
    kavo_link_log(host_, line.data(), line.size());
  }
}

}  // namespace brel::watch
