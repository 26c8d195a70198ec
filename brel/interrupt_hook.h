#pragma once

#include "kavo/link.h"
#include "tav/opt/solver.h"

namespace brel {

// Lets the host stop the solver, as long as it lives.
class InterruptHook {
 public:
  InterruptHook(trpRec* host, tav::opt::AbstractSolver& solver) : host_(host) {
    kavo_link_on_interrupt(
        host, [](void* data) { static_cast<tav::opt::AbstractSolver*>(data)->interrupt(); }, &solver);
  }
  ~InterruptHook() { kavo_link_on_interrupt(host_, nullptr, nullptr); }
  InterruptHook(const InterruptHook&) = delete;
  InterruptHook& operator=(const InterruptHook&) = delete;

 private:
  trpRec* host_;
};

}  // namespace brel
