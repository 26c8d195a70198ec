// What a callback may ask.
#include <pybind11/pybind11.h>

#include <algorithm>
#include <iterator>

#include "bridge/call.h"
#include "bridge/callback.h"
#include "bridge/exports.h"
#include "bridge/values.h"
#include "grb/gurobi/callback_constants.h"

namespace py = pybind11;

namespace bridge {
namespace {

/// Codes whose value is an int: first and last of each run.
struct Range {
  int first, last;
};
constexpr Range kInts[] = {{1000, 1004}, {2004, 2004}, {3003, 3004}, {3007, 3008}, {4006, 4008}, {5001, 5001},
                           {5006, 5009}, {7001, 7001}, {8001, 8002}, {8007, 8007}, {9001, 9006}, {11001, 11001}};

bool isInt(int what) {
  return std::any_of(std::begin(kInts), std::end(kInts),
                     [what](const Range& range) { return range.first <= what && what <= range.last; });
}

void getSolution(Model& m, const char* method, double* result) {
  const py::list values = m.object().attr(method)(m.vars().all());
  for (const py::handle value : values) *result++ = number(value);
}

void getValue(CallbackFrame& frame, int what, void* result) {
  Model& m = *frame.model;
  if (what == grb::what::kMipSolSol || what == grb::what::kMultiObjSol)
    return getSolution(m, "cbGetSolution", static_cast<double*>(result));
  if (what == grb::what::kMipNodeRel) return getSolution(m, "cbGetNodeRel", static_cast<double*>(result));
  const py::object value = m.object().attr("cbGet")(what);
  if (what == grb::what::kMsgString) {
    frame.message = string(value);
    *static_cast<char**>(result) = frame.message.data();
  } else if (isInt(what)) {
    *static_cast<int*>(result) = integer(value);
  } else {
    *static_cast<double*>(result) = number(value);
  }
}

}  // namespace

extern "C" int GRBcbget(void* cbdata, int where, int what, void* resultP) {
  CallbackFrame* const frame = findFrame(cbdata);
  if (frame == nullptr) return grb::error::kCallback;
  return onModel(frame->model->handle(), [&](Model&) {
    if (where != frame->where) throw Failure(grb::error::kCallback, "Callback error");
    getValue(*frame, what, resultP);
  });
}

}  // namespace bridge
