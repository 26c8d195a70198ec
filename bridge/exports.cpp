#include "bridge/exports.h"

namespace bridge {
namespace {

// Refers to every function, so that one without a definition fails at link time instead of in a caller's loader.
[[gnu::used]] void* const kEveryFunction[] = {
#define GRB_FN(result, name, parameters, since) reinterpret_cast<void*>(&name),
#include "grb/gurobi/functions.def"
};

}  // namespace
}  // namespace bridge
