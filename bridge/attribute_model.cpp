// Attributes of the whole model.
#include "bridge/attribute_access.h"
#include "bridge/call.h"
#include "bridge/exports.h"

namespace py = pybind11;

namespace bridge {
namespace {

py::object get(Model& m, const char* name, Type type) {
  requireModelAttribute(m, name, type);
  return withFreshText(m, [&] { return m.methods().getAttr(text(name)); });
}

void set(Model& m, const char* name, Type type, const py::object& value) {
  requireModelAttribute(m, name, type);
  withFreshText(m, [&] { return m.methods().setAttr(text(name), value); });
}

/// Whether one element's value can be read. With no element there is nothing that could be missing from a writable
/// attribute, and nothing that a solve could have brought.
bool readable(Model& m, const char* name) {
  const Attribute& known = attribute(m, name);
  if (known.kind == Kind::kModel) return static_cast<bool>(m.methods().getAttr(text(name)));
  const Elements& elements = m.elements(known.kind);
  if (elements.size() == 0) return known.writable;
  readAttribute(m, name, elements.slice(0, 1));
  return true;
}

}  // namespace

extern "C" {

int GRBisattravailable(GRBmodel* model, const char* name) {
  int available = 0;
  onModel(model, [&](Model& m) {
    try {
      available = readable(m, name) ? 1 : 0;
    } catch (...) {
      currentFailure();  // "no" is an answer, not a failure
    }
  });
  return available;
}

int GRBgetintattr(GRBmodel* model, const char* name, int* valueP) {
  return onModel(model, [&](Model& m) { *valueP = integer(get(m, name, Type::kInt)); });
}

int GRBgetdblattr(GRBmodel* model, const char* name, double* valueP) {
  return onModel(model, [&](Model& m) { *valueP = number(get(m, name, Type::kDouble)); });
}

int GRBgetstrattr(GRBmodel* model, const char* name, char** valueP) {
  return onModel(model, [&](Model& m) {
    m.lastText = string(get(m, name, Type::kText));
    *valueP = m.lastText.data();
  });
}

int GRBsetintattr(GRBmodel* model, const char* name, int value) {
  return onModel(model, [&](Model& m) { set(m, name, Type::kInt, py::int_(value)); });
}

int GRBsetdblattr(GRBmodel* model, const char* name, double value) {
  return onModel(model, [&](Model& m) { set(m, name, Type::kDouble, py::float_(value)); });
}

int GRBsetstrattr(GRBmodel* model, const char* name, const char* value) {
  return onModel(model, [&](Model& m) { set(m, name, Type::kText, text(value)); });
}

}  // extern "C"

}  // namespace bridge
