// The function table: one pointer per Gurobi function in use, made from functions.def.
//
// Nothing in the project calls a Gurobi function by linking to it. Whoever needs one gets a table, filled from a
// library (library.h), from the call trace (trace.h) or by a test.
#pragma once

#include <array>
#include <cstddef>

#include "grb/gurobi/types.h"

namespace grb {

/// Pointers named like the functions. In a table that came from a library every pointer is set.
struct Api {
#define GRB_FN(result, name, params, since) result(*name) params = nullptr;  // NOLINT(bugprone-macro-parentheses)
#include "grb/gurobi/functions.def"
};

/// The functions as numbers 0 to kFnCount - 1, in the order of functions.def.
enum class Fn {
#define GRB_FN(result, name, params, since) name,
#include "grb/gurobi/functions.def"
};

/// The names of the functions, indexed by Fn.
inline constexpr std::array kFnNames{
#define GRB_FN(result, name, params, since) #name,
#include "grb/gurobi/functions.def"
};

inline constexpr std::size_t kFnCount = kFnNames.size();

/// The name of one function, such as "GRBoptimize".
constexpr const char* fnName(Fn function) { return kFnNames[static_cast<std::size_t>(function)]; }

static_assert(sizeof(Api) == kFnCount * sizeof(void (*)()), "a table is nothing but its pointers");

}  // namespace grb
