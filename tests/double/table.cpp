// The rows of the recording table, made from the list of functions.
#include <type_traits>

#include "tests/double/answers_attr.h"
#include "tests/double/answers_env.h"
#include "tests/double/answers_model.h"
#include "tests/double/call_text.h"
#include "tests/double/gurobi_double.h"

namespace gurobi_double {
namespace {

/// Whether the result of an int function is a code that says how the call went. Freeing always succeeds.
constexpr bool returnsCode(Fn function) {
  return function != Fn::GRBfreemodel && function != Fn::GRBgetnumparams && function != Fn::GRBgetparamtype &&
         function != Fn::GRBisattravailable && function != Fn::GRBisgpusupported;
}

/// Functions that take a null handle.
constexpr bool takesNull(Fn function) { return !returnsCode(function) || function == Fn::GRBcbget; }

// The environment that keeps the message of a failure: that of the first handle.
template <typename T>
GRBenv* messageEnv(T handle) {
  if constexpr (std::is_same_v<T, GRBenv*>) return handle;
  if constexpr (std::is_same_v<T, GRBmodel*>) return handle != nullptr ? &handle->env : nullptr;
  return nullptr;
}

template <typename T>
bool isFreed(T handle) {
  if constexpr (std::is_same_v<T, GRBenv*> || std::is_same_v<T, GRBmodel*>) return handle != nullptr && handle->freed;
  return false;
}

template <Fn kFn, typename First>
int injected(GurobiDouble& gurobi, First first, int code) {
  if (GRBenv* const env = messageEnv(first)) env->message = gurobi.failureMessage();
  if constexpr (isAdding(kFn)) first->discard();
  return code;
}

template <Fn kFn, typename First, typename... Rest>
int answerCode(GurobiDouble& gurobi, First first, Rest... rest) {
  const std::string text = callText<kFn>(first, rest...);
  if (const int code = gurobi.enter(kFn, text, returnsCode(kFn)); code != 0) return injected<kFn>(gurobi, first, code);
  if (isFreed(first)) {
    gurobi.note(text);
    return grb::error::kNullArgument;
  }
  if constexpr (std::is_pointer_v<First> && !takesNull(kFn)) {
    if (first == nullptr) return grb::error::kNullArgument;
  }
  if constexpr (std::is_same_v<First, GRBenv*>) {
    if (first != nullptr) first->message.clear();
  }
  return Answer<kFn>::run(gurobi.state(), first, rest...);
}

template <Fn kFn, typename Result, typename... Args>
auto recording(Result (*grb::Api::*)(Args...)) -> Result (*)(Args...) {
  return [](Args... args) -> Result {
    GurobiDouble& gurobi = GurobiDouble::current();
    if constexpr (std::is_same_v<Result, int>) {
      return answerCode<kFn>(gurobi, args...);
    } else {
      const std::string text = callText<kFn>(args...);
      gurobi.enter(kFn, text, false);
      if ((isFreed(args) || ...)) gurobi.note(text);
      return Answer<kFn>::run(gurobi.state(), args...);
    }
  };
}

}  // namespace

grb::Api recordingTable() {
  grb::Api table;
#define GRB_FN(result, name, params, since) table.name = recording<Fn::name>(&grb::Api::name);
#include "grb/gurobi/functions.def"
  return table;
}

}  // namespace gurobi_double
