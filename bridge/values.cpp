#include "bridge/values.h"

#include <fmt/format.h>

#include <cmath>
#include <cstring>
#include <string_view>

#include "bridge/failure.h"
#include "grb/gurobi/constants.h"

namespace py = pybind11;

namespace bridge {
namespace {

template <class Value, class Make>
py::list listOf(int n, const Value* values, Make&& make) {
  py::list list(n > 0 ? n : 0);
  for (int i = 0; i < n; ++i) {
    PyObject* const item = make(values[i]);
    if (item == nullptr) throw py::error_already_set();
    PyList_SET_ITEM(list.ptr(), i, item);
  }
  return list;
}

/// Every byte is a character, so that any sense or type, even a wrong one, reaches the library.
PyObject* makeLetter(char value) { return PyUnicode_DecodeLatin1(&value, 1, nullptr); }

PyObject* latin1(const char* value, Py_ssize_t length) { return PyUnicode_DecodeLatin1(value, length, nullptr); }

/// As UTF-8; when it is not, as `otherwise` makes it.
py::object decode(const char* value, PyObject* (*otherwise)(const char*, Py_ssize_t)) {
  if (value == nullptr) value = "";
  const auto length = static_cast<Py_ssize_t>(std::strlen(value));
  PyObject* made = PyUnicode_DecodeUTF8(value, length, nullptr);
  if (made == nullptr) {
    PyErr_Clear();
    made = otherwise(value, length);
  }
  if (made == nullptr) throw py::error_already_set();
  return py::reinterpret_steal<py::object>(made);
}

}  // namespace

py::list doubleList(int n, const double* values) { return listOf(n, values, PyFloat_FromDouble); }

py::list intList(int n, const int* values) {
  return listOf(n, values, [](int value) { return PyLong_FromLong(value); });
}

py::list charList(int n, const char* values) { return listOf(n, values, makeLetter); }

py::object doublesOr(int n, const double* values, const py::object& otherwise) {
  return values == nullptr ? otherwise : doubleList(n, values);
}

py::object text(const char* value) { return decode(value, latin1); }

py::object path(const char* value) { return decode(value, PyBytes_FromStringAndSize); }

py::object letter(char value) { return py::reinterpret_steal<py::object>(makeLetter(value)); }

py::object senseOf(char value) {
  constexpr std::string_view kLetters = "LGE";
  constexpr std::string_view kSigns = "<>=";
  if (const std::size_t place = kLetters.find(value); place != kLetters.npos) return letter(kSigns[place]);
  if (kSigns.find(value) == kSigns.npos)
    throw Failure(grb::error::kInvalidArgument, fmt::format("Invalid constraint sense: '{}'", value));
  return letter(value);
}

double number(double value) { return std::isinf(value) ? std::copysign(grb::kInfinity, value) : value; }

double number(py::handle value) {
  const double read = PyFloat_AsDouble(value.ptr());
  if (read == -1.0 && PyErr_Occurred() != nullptr) throw py::error_already_set();
  return number(read);
}

int integer(py::handle value) {
  const long read = PyLong_AsLong(value.ptr());
  if (read == -1 && PyErr_Occurred() != nullptr) throw py::error_already_set();
  return static_cast<int>(read);
}

char character(py::handle value) {
  const std::string read = string(value);
  return read.empty() ? '\0' : read.front();
}

std::string string(py::handle value) {
  Py_ssize_t length = 0;
  const char* read = PyUnicode_AsUTF8AndSize(value.ptr(), &length);
  if (read == nullptr) throw py::error_already_set();
  return {read, static_cast<std::size_t>(length)};
}

}  // namespace bridge
