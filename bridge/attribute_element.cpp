// Attributes of one element.
#include "bridge/attribute_access.h"
#include "bridge/call.h"
#include "bridge/exports.h"

namespace py = pybind11;

namespace bridge {

namespace {

template <class T>
int getElement(GRBmodel* model, const char* name, int element, T* value) {
  return onModel(model, [&](Model& m) { readRange(m, name, element, 1, value); });
}

template <class T>
int setElement(GRBmodel* model, const char* name, int element, T value) {
  return onModel(model, [&](Model& m) { writeRange(m, name, element, 1, &value); });
}

}  // namespace

extern "C" {

int GRBgetintattrelement(GRBmodel* model, const char* name, int element, int* valueP) {
  return getElement(model, name, element, valueP);
}

int GRBgetdblattrelement(GRBmodel* model, const char* name, int element, double* valueP) {
  return getElement(model, name, element, valueP);
}

int GRBgetcharattrelement(GRBmodel* model, const char* name, int element, char* valueP) {
  return getElement(model, name, element, valueP);
}

int GRBgetstrattrelement(GRBmodel* model, const char* name, int element, char** valueP) {
  return onModel(model, [&](Model& m) {
    const py::list one = elementsOf(m, name, Type::kText).slice(element, 1);
    m.lastText = string(readAttribute(m, name, one)[0]);
    *valueP = m.lastText.data();
  });
}

int GRBsetintattrelement(GRBmodel* model, const char* name, int element, int value) {
  return setElement(model, name, element, value);
}

int GRBsetdblattrelement(GRBmodel* model, const char* name, int element, double value) {
  return setElement(model, name, element, value);
}

int GRBsetstrattrelement(GRBmodel* model, const char* name, int element, const char* value) {
  return onModel(model, [&](Model& m) {
    py::list one;
    one.append(text(value));
    writeAttribute(m, name, elementsOf(m, name, Type::kText).slice(element, 1), one);
  });
}

}  // extern "C"

}  // namespace bridge
