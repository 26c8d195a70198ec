#include "exports/exports.h"

#include <cstring>
#include <exception>
#include <memory>

#include "brel/link.h"
#include "exports/plugins.h"
#include "grb/solver.h"

std::int32_t grbCreate(brel::Link** slot, char* message, std::int32_t length) {
  try {
    const brel::LinkDef definition = exports::pluginDefinition();
    *slot = std::make_unique<brel::Link>(std::make_shared<grb::Solver>(), definition).release();
    return 0;
  } catch (const std::exception& failure) {
    // Hosts know that a full buffer has no terminating zero.
    if (message != nullptr && length > 0) std::strncpy(message, failure.what(), static_cast<std::size_t>(length));
    return 1;
  }
}

void grbFree(brel::Link** slot) {
  delete *slot;
  *slot = nullptr;
}

std::int32_t grbReadyAPI(brel::Link* link, trpRec* model) { return link->readyAPI(model); }

std::int32_t grbCallSolver(brel::Link* link) { return link->callSolver(); }

std::int32_t grbModifyProblem(brel::Link* link) { return link->modifyProblem(); }

grb::Solver* grbSolverCreate() { return std::make_unique<grb::Solver>().release(); }

void grbSolverFree(grb::Solver* solver) { delete solver; }
