// The frame around functions that add something to a model.
#pragma once

#include "bridge/call.h"

namespace bridge {

/// To be called after gurobipy refused to add something. The library then drops every change since the last update,
/// but gurobipy goes on counting the dropped elements and would give wrong indices to all later ones; this puts the
/// model back to what is committed. Does nothing when no element was waiting.
///
/// Kept although gurobipy's model is copied for it: MIP starts, hints, basis and warm start values. Not kept: the
/// solution. When the failure turns out to be of the harmless kind, which leaves the queue alone, the waiting elements
/// are committed early.
void restoreAfterFailedAdd(Model& model);

/// As onModel, for `body`s that add.
template <class Body>
int onAdd(GRBmodel* handle, Body&& body) noexcept {
  return onModel(handle, [&body](Model& m) {
    try {
      body(m);
    } catch (const pybind11::error_already_set&) {
      const Failure failure = currentFailure();
      restoreAfterFailedAdd(m);
      throw failure;
    }
  });
}

}  // namespace bridge
