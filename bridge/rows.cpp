// Linear rows and their coefficients.
#include <pybind11/pybind11.h>

#include "bridge/adding.h"
#include "bridge/exports.h"
#include "bridge/values.h"

namespace py = pybind11;

namespace bridge {

extern "C" {

int GRBaddconstr(GRBmodel* model, int numnz, int* cind, double* cval, char sense, double rhs, const char* name) {
  return onAdd(model, [&](Model& m) {
    const py::object row = gurobipy().linear(doubleList(numnz, cval), m.vars().pick(numnz, cind));
    m.constrs().append(m.methods().addLConstr(row, senseOf(sense), rhs, text(name)));
  });
}

int GRBXchgcoeffs(GRBmodel* model, size_t cnt, int* cind, int* vind, double* val) {
  return onModel(model, [&](Model& m) {
    const auto count = static_cast<int>(cnt);
    const py::list rows = m.constrs().pick(count, cind);
    const py::list vars = m.vars().pick(count, vind);
    for (int i = 0; i < count; ++i) m.methods().chgCoeff(rows[i], vars[i], val[i]);
  });
}

}  // extern "C"

}  // namespace bridge
