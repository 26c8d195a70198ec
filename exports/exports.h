// The seven functions by which hosts reach the link, and what happens when the library is loaded and unloaded.
#pragma once

#include <cstdint>

struct trpRec;
namespace brel {
class Link;
}
namespace grb {
class Solver;
}

#define GRBLINK_EXPORT extern "C" __attribute__((visibility("default")))

// Makes a link in *slot. 0; or 1 with the reason in `message` (at most `length` bytes of it; a text as long as the
// buffer or longer gets no terminating zero), and *slot stays as it was.
GRBLINK_EXPORT std::int32_t grbCreate(brel::Link** slot, char* message, std::int32_t length);
// Destroys the link in *slot, if any, and stores null there.
GRBLINK_EXPORT void grbFree(brel::Link** slot);
// See brel::Link.
GRBLINK_EXPORT std::int32_t grbReadyAPI(brel::Link* link, trpRec* model);
GRBLINK_EXPORT std::int32_t grbCallSolver(brel::Link* link);
GRBLINK_EXPORT std::int32_t grbModifyProblem(brel::Link* link);
// A solver alone, for hosts that drive it themselves; owned by the caller. Raises what the solver's constructor raises.
GRBLINK_EXPORT grb::Solver* grbSolverCreate();
GRBLINK_EXPORT void grbSolverFree(grb::Solver* solver);
