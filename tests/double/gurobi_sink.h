// A table for measurements: its functions copy their input arrays into growing buffers, keep the counts of elements and
// do nothing else, so that what is measured is the caller.
#pragma once

#include <memory>

#include "grb/gurobi/library.h"

namespace gurobi_double {

/// What reached the sinks of the process since the last reset.
struct SinkTotals {
  long calls = 0;  // calls that add or change something
  long bytes = 0;  // bytes of input arrays
};

/// All sinks of a process share their buffers and counts; one thread at a time. Scalar reads of the five counts
/// ("NumVars", "NumConstrs", "NumQConstrs", "NumSOS", "NumGenConstrs") answer what was added since the last new model,
/// bulk reads of doubles fill 1.0, of integers 0 and of letters 'C'; everything is available; other scalar reads give 0
/// ("Status": optimal).
std::shared_ptr<const grb::Library> sinkLibrary();

SinkTotals sinkTotals();
/// Forgets everything and gives the memory back, so that what follows is charged for its storage like a new model.
void resetSink();

}  // namespace gurobi_double
