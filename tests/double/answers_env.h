// Answers of the library, environment and parameter functions.
#pragma once

#include <fmt/format.h>

#include <algorithm>
#include <cstring>

#include "tests/double/answer.h"

namespace gurobi_double {

template <>
struct Answer<Fn::GRBversion> {
  static void run(State&, int* major, int* minor, int* technical) {
    *major = grb::kVersionMajor;
    *minor = grb::kVersionMinor;
    *technical = grb::kVersionTechnical;
  }
};

template <>
struct Answer<Fn::GRBplatform> {
  static char* run(State& state) {
    state.textBuffer = "linux64";
    return state.textBuffer.data();
  }
};

template <>
struct Answer<Fn::GRBemptyenvinternal> {
  static int run(State& state, GRBenv** env, int major, int minor, int) {
    *env = nullptr;
    if (major != grb::kVersionMajor || minor != grb::kVersionMinor) return grb::error::kInvalidArgument;
    state.envs.push_back(std::make_unique<GRBenv>());
    *env = state.envs.back().get();
    (*env)->label = fmt::format("e{}", state.envs.size());
    return 0;
  }
};

template <>
struct Answer<Fn::GRBstartenv> {
  static int run(State&, GRBenv* env) {
    env->started = true;
    return 0;
  }
};

template <>
struct Answer<Fn::GRBfreeenv> {
  static void run(State&, GRBenv* env) { env->freed = true; }
};

template <>
struct Answer<Fn::GRBgetenv> {
  static GRBenv* run(State&, GRBmodel* model) { return model != nullptr ? &model->env : nullptr; }
};

template <>
struct Answer<Fn::GRBgeterrormsg> {
  static const char* run(State&, GRBenv* env) { return env != nullptr ? env->message.c_str() : ""; }
};

template <>
struct Answer<Fn::GRBisgpusupported> {
  static int run(State&, GRBenv*) { return 0; }
};

/// The definition of a parameter, or null; a code when it is of another type or unknown and that is an error.
template <typename T>
int findParam(State& state, GRBenv* env, const char* name, const ParamDefinition** definition) {
  *definition = nullptr;
  const auto found = state.params.find(lower(name));
  if (found == state.params.end()) {
    return state.unknownParamsRefused
               ? failed(env, grb::error::kUnknownParameter, fmt::format("Unknown parameter: {}", name))
               : 0;
  }
  if (!std::holds_alternative<T>(found->second.defaultValue)) {
    return failed(env, grb::error::kUnknownParameter, fmt::format("Wrong type for parameter: {}", name));
  }
  *definition = &found->second;
  return 0;
}

/// The value that was set, else the default, else nothing (0 or empty).
template <typename T>
T paramValue(GRBenv* env, const char* name, const ParamDefinition* definition) {
  const auto found = env->params.find(lower(name));
  if (found != env->params.end() && std::holds_alternative<T>(found->second)) return std::get<T>(found->second);
  return definition != nullptr ? std::get<T>(definition->defaultValue) : T{};
}

template <typename T>
int readParam(State& state, GRBenv* env, const char* name, T* value) {
  const ParamDefinition* definition = nullptr;
  if (const int code = findParam<T>(state, env, name, &definition); code != 0) return code;
  *value = paramValue<T>(env, name, definition);
  return 0;
}

template <typename T>
int writeParam(State& state, GRBenv* env, const char* name, const T& value) {
  const ParamDefinition* definition = nullptr;
  if (const int code = findParam<T>(state, env, name, &definition); code != 0) return code;
  if constexpr (std::is_arithmetic_v<T>) {
    const auto refuse = [&](const char* word, double bound) {
      return failed(env, grb::error::kValueOutOfRange,
                    fmt::format("Unable to set parameter {} to value {} ({} is {})", name, value, word, bound));
    };
    if (definition != nullptr && value > definition->maximum) return refuse("maximum", definition->maximum);
    if (definition != nullptr && value < definition->minimum) return refuse("minimum", definition->minimum);
  }
  env->params[lower(name)] = value;
  return 0;
}

/// What the info functions tell; all zero for a parameter without definition.
template <typename T>
struct ParamFacts {
  T value{};
  T least{};
  T most{};
  T standard{};
};

template <typename T>
int findFacts(State& state, GRBenv* env, const char* name, ParamFacts<T>& facts) {
  const ParamDefinition* definition = nullptr;
  if (const int code = findParam<T>(state, env, name, &definition); code != 0) return code;
  facts.value = paramValue<T>(env, name, definition);
  if (definition == nullptr) return 0;
  facts.standard = std::get<T>(definition->defaultValue);
  if constexpr (std::is_arithmetic_v<T>) {
    facts.least = static_cast<T>(definition->minimum);
    facts.most = static_cast<T>(definition->maximum);
  }
  return 0;
}

template <typename T>
void give(T* target, const T& value) {
  if (target != nullptr) *target = value;
}

inline void copyText(const std::string& text, char* buffer) {
  if (buffer == nullptr) return;
  const std::size_t length = std::min(text.size(), grb::kStringParamSize - 1);
  std::memcpy(buffer, text.data(), length);
  buffer[length] = '\0';
}

template <>
struct Answer<Fn::GRBgetintparam> {
  static int run(State& state, GRBenv* env, const char* name, int* value) { return readParam(state, env, name, value); }
};
template <>
struct Answer<Fn::GRBgetdblparam> {
  static int run(State& state, GRBenv* env, const char* name, double* value) {
    return readParam(state, env, name, value);
  }
};
template <>
struct Answer<Fn::GRBgetstrparam> {
  static int run(State& state, GRBenv* env, const char* name, char* value) {
    std::string text;
    const int code = readParam(state, env, name, &text);
    if (code == 0) copyText(text, value);
    return code;
  }
};
template <>
struct Answer<Fn::GRBsetintparam> {
  static int run(State& state, GRBenv* env, const char* name, int value) { return writeParam(state, env, name, value); }
};
template <>
struct Answer<Fn::GRBsetdblparam> {
  static int run(State& state, GRBenv* env, const char* name, double value) {
    return writeParam(state, env, name, value);
  }
};
template <>
struct Answer<Fn::GRBsetstrparam> {
  static int run(State& state, GRBenv* env, const char* name, const char* value) {
    return value == nullptr ? 0 : writeParam(state, env, name, std::string(value));
  }
};
template <typename T>
struct ReadParamInfo {
  static int run(State& state, GRBenv* env, const char* name, T* value, T* least, T* most, T* standard) {
    ParamFacts<T> facts;
    if (const int code = findFacts(state, env, name, facts); code != 0) return code;
    give(value, facts.value);
    give(least, facts.least);
    give(most, facts.most);
    give(standard, facts.standard);
    return 0;
  }
};
template <>
struct Answer<Fn::GRBgetintparaminfo> : ReadParamInfo<int> {};
template <>
struct Answer<Fn::GRBgetdblparaminfo> : ReadParamInfo<double> {};
template <>
struct Answer<Fn::GRBgetstrparaminfo> {
  static int run(State& state, GRBenv* env, const char* name, char* value, char* standard) {
    ParamFacts<std::string> facts;
    if (const int code = findFacts(state, env, name, facts); code != 0) return code;
    copyText(facts.value, value);
    copyText(facts.standard, standard);
    return 0;
  }
};
template <>
struct Answer<Fn::GRBgetnumparams> {
  static int run(State& state, GRBenv*) { return static_cast<int>(state.paramOrder.size()); }
};
template <>
struct Answer<Fn::GRBgetparamname> {
  static int run(State& state, GRBenv* env, int i, char** name) {
    if (i < 0 || i >= static_cast<int>(state.paramOrder.size())) {
      return failed(env, grb::error::kInvalidArgument, "Invalid argument value for required parameter");
    }
    *name = state.params[state.paramOrder[static_cast<std::size_t>(i)]].name.data();
    return 0;
  }
};
template <>
struct Answer<Fn::GRBgetparamtype> {
  static int run(State& state, GRBenv*, const char* name) {
    const auto found = state.params.find(lower(name));
    return found == state.params.end() ? grb::paramtype::kUnknown
                                       : static_cast<int>(found->second.defaultValue.index()) + 1;
  }
};
template <>
struct Answer<Fn::GRBreadparams> {
  static int run(State&, GRBenv*, const char*) { return 0; }
};
template <>
struct Answer<Fn::GRBwriteparams> {
  static int run(State&, GRBenv*, const char*) { return 0; }
};

}  // namespace gurobi_double
