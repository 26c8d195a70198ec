#include "bridge/attribute_access.h"

#include <algorithm>
#include <vector>

namespace py = pybind11;

namespace bridge {

py::list readAttribute(Model& model, const char* name, const py::list& elements) {
  if (elements.empty()) return elements;
  const py::object key = text(name);
  return withFreshText(model, [&] { return model.methods().getAttr(key, elements); });
}

void writeAttribute(Model& model, const char* name, const py::list& elements, const py::list& values) {
  if (elements.empty()) return;
  const py::object key = text(name);
  withFreshText(model, [&] { return model.methods().setAttr(key, elements, values); });
}

namespace {

template <class T, class Convert>
void convertAll(const py::list& values, T* out, Convert&& convert) {
  std::vector<T> converted;
  converted.reserve(values.size());
  for (const py::handle value : values) converted.push_back(convert(value));
  std::copy(converted.begin(), converted.end(), out);
}

}  // namespace

template <>
void copyOut(const py::list& values, double* out) {
  convertAll(values, out, [](py::handle value) { return number(value); });
}

template <>
void copyOut(const py::list& values, int* out) {
  convertAll(values, out, integer);
}

template <>
void copyOut(const py::list& values, char* out) {
  convertAll(values, out, character);
}

}  // namespace bridge
