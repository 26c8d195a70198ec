// Answers of the functions that make, build and solve models.
#pragma once

#include <fmt/format.h>

#include <algorithm>

#include "tests/double/answer.h"

namespace gurobi_double {

inline int makeModel(State& state, GRBenv* env, GRBmodel** model) {
  *model = nullptr;
  if (!env->started) {
    return failed(env, grb::error::kNoLicense, "No Gurobi license, or license not started or set");
  }
  state.models.push_back(std::make_unique<GRBmodel>());
  *model = state.models.back().get();
  (*model)->label = fmt::format("m{}", state.models.size());
  (*model)->env = *env;
  (*model)->env.label = (*model)->label + ".env";
  return 0;
}

inline int committed(GRBmodel* model) {
  model->commit();
  return 0;
}

template <>
struct Answer<Fn::GRBnewmodel> {
  template <typename... Args>
  static int run(State& state, GRBenv* env, GRBmodel** model, const Args&...) {
    return makeModel(state, env, model);
  }
};
template <>
struct Answer<Fn::GRBreadmodel> {
  static int run(State& state, GRBenv* env, const char*, GRBmodel** model) { return makeModel(state, env, model); }
};
template <>
struct Answer<Fn::GRBfreemodel> {
  static int run(State&, GRBmodel* model) {
    if (model != nullptr) model->freed = model->env.freed = true;
    return 0;
  }
};
template <>
struct Answer<Fn::GRBupdatemodel> {
  static int run(State&, GRBmodel* model) { return committed(model); }
};
template <>
struct Answer<Fn::GRBwrite> {
  static int run(State&, GRBmodel* model, const char*) { return committed(model); }
};

template <typename T>
T valueOr(const T* values, int i, T fallback) {
  return values != nullptr ? values[i] : fallback;
}

inline void nameElement(GRBmodel* model, const char* attribute, int position, const char* name) {
  if (name != nullptr && *name != '\0') model->queuedValues.elementTexts[attribute][position] = name;
}

struct NewVar {
  double obj;
  double lb;
  double ub;
  char vtype;
  const char* name;
};

inline void queueVar(GRBmodel* model, const NewVar& var) {
  const int position = model->total(Kind::kVar);
  auto& numbers = model->queuedValues.elementNumbers;
  numbers["obj"][position] = var.obj;
  numbers["lb"][position] = var.lb;
  numbers["ub"][position] = var.ub;
  numbers["vtype"][position] = var.vtype;
  nameElement(model, "varname", position, var.name);
  queue(model, Kind::kVar);
}

template <>
struct Answer<Fn::GRBaddvar> {
  static int run(State&, GRBmodel* model, int, int*, double*, double obj, double lb, double ub, char vtype,
                 const char* name) {
    queueVar(model, {obj, lb, ub, vtype, name});
    return 0;
  }
};
template <>
struct Answer<Fn::GRBaddvars> {
  static int run(State&, GRBmodel* model, int number, int, int*, int*, double*, double* obj, double* lb, double* ub,
                 char* vtype, char** names) {
    for (int i = 0; i < number; ++i) {
      queueVar(model, {valueOr(obj, i, 0.0), valueOr(lb, i, 0.0), valueOr(ub, i, grb::kInfinity),
                       valueOr(vtype, i, grb::vartype::kContinuous), valueOr<char*>(names, i, nullptr)});
    }
    return 0;
  }
};
/// Gurobi takes letters too and reads symbols back.
inline char symbolOf(char sense) {
  switch (sense) {
    case 'G':
      return grb::sense::kGreaterEqual;
    case 'L':
      return grb::sense::kLessEqual;
    case 'E':
      return grb::sense::kEqual;
    default:
      return sense;
  }
}

template <>
struct Answer<Fn::GRBaddconstr> {
  static int run(State&, GRBmodel* model, int, int*, double*, char sense, double rhs, const char* name) {
    const int position = model->total(Kind::kRow);
    model->queuedValues.elementNumbers["sense"][position] = symbolOf(sense);
    model->queuedValues.elementNumbers["rhs"][position] = rhs;
    nameElement(model, "constrname", position, name);
    queue(model, Kind::kRow);
    return 0;
  }
};
template <>
struct Answer<Fn::GRBXchgcoeffs> {
  static int run(State&, GRBmodel* model, std::size_t number, int*, int*, double*) {
    model->coefficientsQueued = model->coefficientsQueued || number > 0;
    return 0;
  }
};
template <>
struct Answer<Fn::GRBaddqpterms> {
  static int run(State&, GRBmodel* model, int number, int*, int*, double*) {
    model->coefficientsQueued = model->coefficientsQueued || number > 0;
    return 0;
  }
};
template <>
struct Answer<Fn::GRBaddsos> {
  static int run(State&, GRBmodel* model, int number, int, int*, int*, int*, double*) {
    queue(model, Kind::kSos, number);
    return 0;
  }
};

template <>
struct Answer<Fn::GRBoptimize> {
  static int run(State&, GRBmodel* model) { return committed(model); }
};
template <>
struct Answer<Fn::GRBcomputeIIS> {
  static int run(State&, GRBmodel* model) { return committed(model); }
};
template <>
struct Answer<Fn::GRBterminate> {
  static void run(State&, GRBmodel* model) {
    if (model != nullptr) ++model->terminations;
  }
};
template <>
struct Answer<Fn::GRBfeasrelax> {
  static int run(State& state, GRBmodel* model, int, int, double*, double*, double*, double* value) {
    *value = state.relaxation;
    return committed(model);
  }
};
template <>
struct Answer<Fn::GRBconverttofixed> {
  static int run(State&, GRBmodel* model) {
    return model->hasQueue() ? failed(model, grb::error::kNotSupported,
                                      "Error: model has pending changes, not supported for GRBconverttofixed()")
                             : 0;
  }
};
template <>
struct Answer<Fn::GRBtunemodel> {
  static int run(State&, GRBmodel* model) { return committed(model); }
};
template <>
struct Answer<Fn::GRBtunemodels> {
  static int run(State&, GRBenv*, int number, GRBmodel** models) {
    for (int i = 0; i < number; ++i) models[i]->commit();
    return 0;
  }
};
template <>
struct Answer<Fn::GRBgettuneresult> {
  static int run(State& state, GRBmodel* model, int i) {
    const auto count = state.scripted.numbers.find("tuneresultcount");
    if (count == state.scripted.numbers.end()) {
      return failed(model, grb::error::kDataNotAvailable, "Requested data not available");
    }
    return i < 0 || i >= count->second ? failed(model, grb::error::kIndexOutOfRange, "Index is out of range") : 0;
  }
};

template <>
struct Answer<Fn::GRBsetcallbackfuncadv> {
  static int run(State&, GRBmodel* model, grb::GurobiCallback callback, void* context, unsigned wheres) {
    if (callback != nullptr && wheres == 0) {
      return failed(model, grb::error::kInvalidArgument, "Invalid callback 'where' flags");
    }
    model->callback = callback;
    model->callbackContext = context;
    model->callbackMask = wheres;
    return 0;
  }
};
template <>
struct Answer<Fn::GRBsetlogcallbackfunc> {
  static int run(State&, GRBmodel* model, grb::GurobiLogCallback callback, void* context) {
    model->logCallback = callback;
    model->logContext = context;
    return 0;
  }
};
template <>
struct Answer<Fn::GRBcbget> {
  static int run(State& state, void* cbdata, int, int what, void* result) {
    if (cbdata == nullptr) return grb::error::kCallback;
    if (const auto found = state.callbackInts.find(what); found != state.callbackInts.end()) {
      *static_cast<int*>(result) = found->second;
      return 0;
    }
    const auto found = state.callbackDoubles.find(what);
    if (found == state.callbackDoubles.end()) return grb::error::kCallback;
    std::copy(found->second.begin(), found->second.end(), static_cast<double*>(result));
    return 0;
  }
};

}  // namespace gurobi_double
