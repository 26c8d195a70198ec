#include "brel/watch/watch.h"

namespace brel::watch {

Watch::Watch(trpRec* host, tav::opt::AbstractSolver& solver, const load::TranslatedModel& model)
    : host_(host), solver_(solver), model_(model) {}

Watch::~Watch() = default;

void Watch::begin() {}
void Watch::end() {}
void Watch::logged() {}
void Watch::stopByRule() { stoppedByRule_ = true; }

}  // namespace brel::watch
