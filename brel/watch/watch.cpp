#include "brel/watch/watch.h"

#include "brel/watch/host_progress.h"
#include "brel/watch/running.h"

namespace brel::watch {

Watch::Watch(trpRec* host, tav::opt::AbstractSolver& solver, const load::TranslatedModel& model)
    : host_(host), solver_(solver), model_(model) {}

Watch::~Watch() = default;

void Watch::begin() {
  if (kavo_link_wants_progress(host_) != 0) add(std::make_shared<HostProgress>(host_));
  if (!listeners_.empty()) running_ = std::make_unique<Running>(host_, solver_, model_, listeners_);
}

void Watch::end(bool hasSolved) {
  if (running_) running_->end(hasSolved);
}

void Watch::logged() {
  if (running_) running_->logged();
}

void Watch::say(std::string line) { running_->say(std::move(line)); }

void Watch::stopByRule() {
  stoppedByRule_ = true;
  running_->stop();
}

}  // namespace brel::watch
