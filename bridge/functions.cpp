// Constraints y = f(x) for one variable x.
#include <pybind11/pybind11.h>

#include "bridge/adding.h"
#include "bridge/exports.h"
#include "bridge/values.h"

namespace py = pybind11;

namespace bridge {
namespace {

/// x, y, the function's own parameters (none, a number or a list), name, options: gurobipy has this order throughout.
struct FunctionData {
  const char* name;
  int xvar;
  int yvar;
  const char* options;
};

template <class... Parameters>
int addFunction(GRBmodel* model, const char* method, const FunctionData& data, Parameters... parameters) {
  return onAdd(model, [&](Model& m) {
    m.elements(Kind::kGenConstr)
        .append(m.object().attr(method)(m.vars().at(data.xvar), m.vars().at(data.yvar), parameters..., text(data.name),
                                        text(data.options)));
  });
}

}  // namespace

extern "C" {

int GRBaddgenconstrPoly(GRBmodel* model, const char* name, int xvar, int yvar, int plen, const double* p,
                        const char* options) {
  return onAdd(model, [&](Model& m) {
    m.elements(Kind::kGenConstr)
        .append(m.object().attr("addGenConstrPoly")(m.vars().at(xvar), m.vars().at(yvar), doubleList(plen, p),
                                                    text(name), text(options)));
  });
}

int GRBaddgenconstrExpA(GRBmodel* model, const char* name, int xvar, int yvar, double a, const char* options) {
  return addFunction(model, "addGenConstrExpA", {name, xvar, yvar, options}, a);
}

int GRBaddgenconstrLogA(GRBmodel* model, const char* name, int xvar, int yvar, double a, const char* options) {
  return addFunction(model, "addGenConstrLogA", {name, xvar, yvar, options}, a);
}

int GRBaddgenconstrPow(GRBmodel* model, const char* name, int xvar, int yvar, double a, const char* options) {
  return addFunction(model, "addGenConstrPow", {name, xvar, yvar, options}, a);
}

int GRBaddgenconstrExp(GRBmodel* model, const char* name, int xvar, int yvar, const char* options) {
  return addFunction(model, "addGenConstrExp", {name, xvar, yvar, options});
}

int GRBaddgenconstrLog(GRBmodel* model, const char* name, int xvar, int yvar, const char* options) {
  return addFunction(model, "addGenConstrLog", {name, xvar, yvar, options});
}

int GRBaddgenconstrLogistic(GRBmodel* model, const char* name, int xvar, int yvar, const char* options) {
  return addFunction(model, "addGenConstrLogistic", {name, xvar, yvar, options});
}

int GRBaddgenconstrSin(GRBmodel* model, const char* name, int xvar, int yvar, const char* options) {
  return addFunction(model, "addGenConstrSin", {name, xvar, yvar, options});
}

int GRBaddgenconstrCos(GRBmodel* model, const char* name, int xvar, int yvar, const char* options) {
  return addFunction(model, "addGenConstrCos", {name, xvar, yvar, options});
}

int GRBaddgenconstrTan(GRBmodel* model, const char* name, int xvar, int yvar, const char* options) {
  return addFunction(model, "addGenConstrTan", {name, xvar, yvar, options});
}

}  // extern "C"

}  // namespace bridge
