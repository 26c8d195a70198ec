#include "bridge/exports.h"

#include <type_traits>

namespace {

#define GRB_FN(result, name, parameters, since)                        \
  static_assert(std::is_same_v<decltype(&name), result(*) parameters>, \
                #name " is declared with other types than the list of functions gives it");
#include "grb/gurobi/functions.def"

// Refers to every function, so that one without a definition fails at link time instead of in a caller's loader.
[[gnu::used]] void* const kEveryFunction[] = {
#define GRB_FN(result, name, parameters, since) reinterpret_cast<void*>(&name),
#include "grb/gurobi/functions.def"
};

}  // namespace
