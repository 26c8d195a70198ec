#include "tests/brel/forward_link.h"

#define EXPORTED __attribute__((visibility("default")))

static struct link_functions to;

EXPORTED void forwardTo(const struct link_functions* functions) { to = *functions; }

EXPORTED int grbCreate(void** handle, char* message, int length) { return to.create(handle, message, length); }
EXPORTED void grbFree(void** handle) { to.free(handle); }
EXPORTED int grbReadyAPI(void* handle, struct trpRec* model) { return to.ready(handle, model); }
EXPORTED int grbCallSolver(void* handle) { return to.call(handle); }
EXPORTED int grbModifyProblem(void* handle) { return to.modify(handle); }
