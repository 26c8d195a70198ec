#include "bridge/adding.h"

#include <array>
#include <utility>
#include <vector>

#include "bridge/values.h"

namespace py = pybind11;
using namespace py::literals;

namespace bridge {
namespace {

constexpr std::array<std::pair<Kind, const char*>, 5> kCounts = {{{Kind::kVar, "NumVars"},
                                                                  {Kind::kConstr, "NumConstrs"},
                                                                  {Kind::kSos, "NumSOS"},
                                                                  {Kind::kQConstr, "NumQConstrs"},
                                                                  {Kind::kGenConstr, "NumGenConstrs"}}};

bool allCommitted(Model& model) {
  for (const auto& [kind, attribute] : kCounts)
    if (model.count(attribute) != model.elements(kind).size()) return false;
  return true;
}

/// What a copy of a model in gurobipy leaves behind, by kind of element.
constexpr std::pair<Kind, const char*> kLeftBehind[] = {
    {Kind::kVar, "VarHintVal"}, {Kind::kVar, "VarHintPri"}, {Kind::kVar, "VBasis"},
    {Kind::kConstr, "CBasis"},  {Kind::kVar, "PStart"},     {Kind::kConstr, "DStart"},
};

/// The committed elements of one kind in the model that is left, and their counterparts in the copy.
struct Pair {
  py::list from, to;
};

struct Copying {
  py::object old, copy;
  Pair vars, constrs;

  void carry(Kind kind, const char* attribute) const {
    const Pair& elements = kind == Kind::kVar ? vars : constrs;
    try {
      copy.attr("setAttr")(attribute, elements.to, old.attr("getAttr")(attribute, elements.from));
    } catch (const py::error_already_set&) {
      // Not set in the model that is left: nothing to carry.
    }
  }

  void carryStarts() const {
    const int starts = integer(old.attr("getAttr")("NumStart"));
    if (starts == 0) return;
    const py::object before = old.attr("_env").attr("getParam")("StartNumber");
    copy.attr("setAttr")("NumStart", starts);
    copy.attr("update")();
    for (int start = 0; start < starts; ++start) {
      old.attr("_env").attr("setParam")("StartNumber", start);
      copy.attr("_env").attr("setParam")("StartNumber", start);
      carry(Kind::kVar, "Start");
    }
    copy.attr("_env").attr("setParam")("StartNumber", before);
  }
};

void replaceByCopy(Model& model) {
  const LogScope silent(nullptr);
  const py::object old = model.object();
  const py::object copy = old.attr("copy")();
  const Copying copying{old,
                        copy,
                        {model.vars().slice(0, model.count("NumVars")), copy.attr("getVars")()},
                        {model.constrs().slice(0, model.count("NumConstrs")), copy.attr("getConstrs")()}};
  copy.attr("setAttr")("ModelName", old.attr("getAttr")("ModelName"));
  for (const auto& [kind, attribute] : kLeftBehind) copying.carry(kind, attribute);
  copying.carryStarts();
  copy.attr("update")();
  model.setObject(copy);
  old.attr("dispose")();
}

}  // namespace

void restoreAfterFailedAdd(Model& model) {
  try {
    if (allCommitted(model)) return;
    model.object().attr("update")();
    if (!allCommitted(model)) replaceByCopy(model);
  } catch (const py::error_already_set&) {
    currentFailure();  // A model that is being solved cannot be touched; nothing can have been waiting in it then.
  }
}

}  // namespace bridge
