// Quadratic objective terms, quadratic rows and special ordered sets.
#include <pybind11/pybind11.h>

#include "bridge/adding.h"
#include "bridge/exports.h"
#include "bridge/values.h"

namespace py = pybind11;

namespace bridge {
namespace {

struct QuadraticTerms {
  int count;
  const int* row;
  const int* col;
  const double* value;
};

void addTerms(Model& m, const py::object& expression, const QuadraticTerms& terms) {
  if (terms.count <= 0) return;
  expression.attr("addTerms")(doubleList(terms.count, terms.value), m.vars().pick(terms.count, terms.row),
                              m.vars().pick(terms.count, terms.col));
}

/// gurobipy can only replace the whole objective, and the objective it hands out is the committed one; so pending
/// changes are committed first, or they would be lost.
void addToObjective(Model& m, const QuadraticTerms& terms) {
  const py::object added = gurobipy().quadratic();
  addTerms(m, added, terms);
  m.object().attr("update")();
  const py::object objective = gurobipy().quadratic(m.object().attr("getObjective")());
  objective.attr("add")(added);
  m.object().attr("setObjective")(objective);
}

struct Sets {
  int count;
  int members;
  const int* types;
  const int* beg;
  const int* ind;
  const double* weight;
};

/// gurobipy adds one set per call. Without weights it numbers the members.
void addSets(Model& m, const Sets& sets) {
  for (int i = 0; i < sets.count; ++i) {
    const int first = sets.beg[i];
    const int length = (i + 1 < sets.count ? sets.beg[i + 1] : sets.members) - first;
    if (length < 0) throw Failure(grb::error::kInvalidArgument, "Set starts must not decrease");
    const py::list members = m.vars().pick(length, sets.ind + first);
    const double* const weights = sets.weight == nullptr ? nullptr : sets.weight + first;
    m.elements(Kind::kSos)
        .append(m.object().attr("addSOS")(sets.types[i], members, doublesOr(length, weights, py::none())));
  }
}

}  // namespace

extern "C" {

int GRBaddqpterms(GRBmodel* model, int numqnz, int* qrow, int* qcol, double* qval) {
  return onModel(model, [&](Model& m) {
    if (numqnz > 0) addToObjective(m, {numqnz, qrow, qcol, qval});
  });
}

int GRBaddqconstr(GRBmodel* model, int numlnz, int* lind, double* lval, int numqnz, int* qrow, int* qcol, double* qval,
                  char sense, double rhs, const char* name) {
  return onAdd(model, [&](Model& m) {
    const py::object linear = gurobipy().linear(doubleList(numlnz, lval), m.vars().pick(numlnz, lind));
    const py::object row = gurobipy().quadratic(linear);
    addTerms(m, row, {numqnz, qrow, qcol, qval});
    m.elements(Kind::kQConstr).append(m.object().attr("addQConstr")(row, senseOf(sense), rhs, text(name)));
  });
}

int GRBaddsos(GRBmodel* model, int numsos, int nummembers, int* types, int* beg, int* ind, double* weight) {
  return onAdd(model, [&](Model& m) { addSets(m, {numsos, nummembers, types, beg, ind, weight}); });
}

}  // extern "C"

}  // namespace bridge
