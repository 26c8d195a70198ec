#include "bridge/elements.h"

#include <fmt/format.h>

#include "bridge/failure.h"
#include "grb/gurobi/constants.h"

namespace py = pybind11;

namespace bridge {

void Elements::check(int index) const {
  if (index < 0 || index >= size())
    throw Failure(grb::error::kIndexOutOfRange, fmt::format("Index {} is out of range (there are {})", index, size()));
}

py::object Elements::at(int index) const {
  check(index);
  return py::reinterpret_borrow<py::object>(PyList_GET_ITEM(list_.ptr(), index));
}

py::list Elements::slice(int first, int len) const {
  if (len <= 0) return py::list();
  check(first);
  if (len > size() - first) check(size());
  if (len == size()) return list_;
  PyObject* const part = PyList_GetSlice(list_.ptr(), first, first + len);
  if (part == nullptr) throw py::error_already_set();
  return py::reinterpret_steal<py::list>(part);
}

py::list Elements::pick(int len, const int* ind) const {
  py::list picked(len > 0 ? len : 0);
  for (int i = 0; i < len; ++i) {
    check(ind[i]);
    PyList_SET_ITEM(picked.ptr(), i, Py_NewRef(PyList_GET_ITEM(list_.ptr(), ind[i])));
  }
  return picked;
}

}  // namespace bridge
