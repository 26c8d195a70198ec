#include "bridge/variables.h"

#include "bridge/adding.h"
#include "bridge/call.h"
#include "bridge/exports.h"
#include "bridge/values.h"

namespace py = pybind11;
using namespace py::literals;

namespace bridge {

namespace {

/// Variable `i` alone; `column` is gurobipy's Column or None.
py::object addOne(const py::object& addVar, const VariableData& data, int i, const py::object& column) {
  const double lb = data.lb == nullptr ? 0.0 : data.lb[i];
  const double ub = data.ub == nullptr ? grb::kInfinity : data.ub[i];
  const double obj = data.obj == nullptr ? 0.0 : data.obj[i];
  const char vtype = data.vtype == nullptr ? grb::vartype::kContinuous : data.vtype[i];
  return addVar(lb, ub, obj, letter(vtype), text(data.names == nullptr ? nullptr : data.names[i]), column);
}

py::object addMany(const py::object& addVars, const VariableData& data) {
  py::dict named;
  if (data.obj != nullptr) named["obj"] = doubleList(data.count, data.obj);
  if (data.lb != nullptr) named["lb"] = doubleList(data.count, data.lb);
  if (data.ub != nullptr) named["ub"] = doubleList(data.count, data.ub);
  if (data.vtype != nullptr) named["vtype"] = charList(data.count, data.vtype);
  if (data.names != nullptr) {
    py::list names(data.count);
    for (int i = 0; i < data.count; ++i) names[i] = text(data.names[i]);
    named["name"] = names;
  }
  return addVars(data.count, **named).attr("values")();
}

}  // namespace

py::object addVariables(const py::object& model, const VariableData& data) {
  py::list added;
  if (data.count <= 0) return added;
  // addVars takes a list of one name for the stem of a name with an index.
  if (data.count > 1) return addMany(model.attr("addVars"), data);
  added.append(addOne(model.attr("addVar"), data, 0, py::none()));
  return added;
}

namespace {

/// The column of variable `i`: entries beg[i] up to beg[i + 1], or to `numnz` for the last of `count`.
py::object column(Model& m, int first, int end, const int* ind, const double* values) {
  const int length = end - first;
  if (length < 0) throw Failure(grb::error::kInvalidArgument, "Column starts must not decrease");
  return gurobipy().column(doubleList(length, values + first), m.constrs().pick(length, ind + first));
}

struct Columns {
  int numnz;
  const int* beg;
  const int* ind;
  const double* values;
};

/// One call per variable: gurobipy has no bulk call with columns. All of them are built first, so that a bad entry is
/// found before any variable is queued.
void addWithColumns(Model& m, const VariableData& data, const Columns& columns) {
  py::list built(data.count);
  for (int i = 0; i < data.count; ++i) {
    const int end = i + 1 < data.count ? columns.beg[i + 1] : columns.numnz;
    built[i] = column(m, columns.beg[i], end, columns.ind, columns.values);
  }
  for (int i = 0; i < data.count; ++i) m.vars().append(addOne(m.methods().addVar, data, i, built[i]));
}

}  // namespace

extern "C" {

int GRBaddvar(GRBmodel* model, int numnz, int* vind, double* vval, double obj, double lb, double ub, char vtype,
              const char* name) {
  return onAdd(model, [&](Model& m) {
    const py::object entries = numnz > 0 ? column(m, 0, numnz, vind, vval) : py::object(py::none());
    m.vars().append(m.methods().addVar(lb, ub, obj, letter(vtype), text(name), entries));
  });
}

int GRBaddvars(GRBmodel* model, int numvars, int numnz, int* vbeg, int* vind, double* vval, double* obj, double* lb,
               double* ub, char* vtype, char** varnames) {
  return onAdd(model, [&](Model& m) {
    const VariableData data{numvars, obj, lb, ub, vtype, varnames};
    if (numnz > 0) return addWithColumns(m, data, {numnz, vbeg, vind, vval});
    for (const py::handle var : addVariables(m.object(), data))
      m.vars().append(py::reinterpret_borrow<py::object>(var));
  });
}

}  // extern "C"

}  // namespace bridge
