#include "bridge/attribute_access.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

#include "bridge/failure.h"
#include "grb/gurobi/constants.h"

namespace py = pybind11;

namespace bridge {

py::list readAttribute(Model& model, const char* name, const py::list& elements) {
  if (elements.empty()) return elements;
  try {
    return model.methods().getAttr(text(name), elements);
  } catch (const py::error_already_set&) {
    const Failure failure = currentFailure();
    if (failure.code() != grb::error::kDataNotAvailable) throw failure;
    // gurobipy keeps the text of an earlier failure in this case, which may name another attribute.
    throw Failure(failure.code(), fmt::format("Unable to retrieve attribute '{}'", name));
  }
}

void writeAttribute(Model& model, const char* name, const py::list& elements, const py::list& values) {
  if (!elements.empty()) model.methods().setAttr(text(name), elements, values);
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
