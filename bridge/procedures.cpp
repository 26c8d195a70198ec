// Infeasibility analysis, relaxation, fixing and tuning.
#include <pybind11/pybind11.h>

#include <vector>

#include "bridge/call.h"
#include "bridge/callback.h"
#include "bridge/exports.h"
#include "bridge/stop.h"
#include "bridge/values.h"

namespace py = pybind11;

namespace bridge {
namespace {

struct Penalties {
  const double* lb;
  const double* ub;
  const double* rhs;
};

/// gurobipy takes each kind's elements and penalties, or None when nothing of that kind may be relaxed.
double relax(Model& m, int objective, bool minimal, const Penalties& penalties) {
  m.object().attr("update")();  // the penalties are for the committed elements, which are all of them afterwards
  const int numVars = m.vars().size();
  const int numConstrs = m.constrs().size();
  const bool anyVar = penalties.lb != nullptr || penalties.ub != nullptr;
  const py::object vars = anyVar ? py::object(m.vars().all()) : py::none();
  const py::object constrs = penalties.rhs != nullptr ? py::object(m.constrs().all()) : py::none();
  const StopWatch watch(m);
  return number(m.object().attr("feasRelax")(objective, minimal, vars, doublesOr(numVars, penalties.lb, py::none()),
                                             doublesOr(numVars, penalties.ub, py::none()), constrs,
                                             doublesOr(numConstrs, penalties.rhs, py::none())));
}

}  // namespace

extern "C" {

int GRBcomputeIIS(GRBmodel* model) {
  return onModel(model, [](Model& m) { runWithCallback(m, "computeIIS"); });
}

int GRBfeasrelax(GRBmodel* model, int relaxobjtype, int minrelax, double* lbpen, double* ubpen, double* rhspen,
                 double* feasobjP) {
  return onModel(model, [&](Model& m) {
    const double value = relax(m, relaxobjtype, minrelax != 0, {lbpen, ubpen, rhspen});
    m.readElements();
    if (feasobjP != nullptr) *feasobjP = value;
  });
}

int GRBconverttofixed(GRBmodel* model) {
  return onModel(model, [](Model& m) {
    m.object().attr("convertToFixed")();
    m.readElements();
  });
}

int GRBtunemodel(GRBmodel* model) {
  return onModel(model, [](Model& m) {
    const StopWatch watch(m);
    m.object().attr("tune")();
  });
}

int GRBtunemodels(GRBenv* env, int nummodels, GRBmodel** tuned) {
  return onEnv(env, [&](Env& e) {
    py::list objects;
    std::vector<std::shared_ptr<Model>> held;
    for (int i = 0; i < nummodels; ++i) {
      held.push_back(models().find(tuned[i]));
      if (held.back() == nullptr) throw Failure(grb::error::kNullArgument, "One of the models is NULL or was freed");
      objects.append(held.back()->object());
    }
    const LogScope toFirst(held.empty() ? nullptr : held.front().get());  // the base environment has no callback
    e.object().attr("tuneModels")(objects);
  });
}

int GRBgettuneresult(GRBmodel* model, int i) {
  return onModel(model, [&](Model& m) { m.object().attr("getTuneResult")(i); });
}

}  // extern "C"

}  // namespace bridge
