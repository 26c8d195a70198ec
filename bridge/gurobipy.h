// The package gurobipy, with the names that every call needs looked up once.
#pragma once

#include <pybind11/pybind11.h>

#include <string>

namespace bridge {

/// gurobipy's classes and functions, and the version of the Gurobi library inside the package. Lives as long as the
/// process. All members are to be used with the lock of the interpreter.
struct Gurobipy {
  pybind11::object environment;    ///< Env
  pybind11::object model;          ///< Model
  pybind11::object linear;         ///< LinExpr
  pybind11::object quadratic;      ///< QuadExpr
  pybind11::object column;         ///< Column
  pybind11::object gurobiError;    ///< GurobiError
  pybind11::object read;           ///< read(file, env=...)
  pybind11::object attributeInfo;  ///< (model, attribute name) -> (type, kind of element, writable)
  int major = 0;
  int minor = 0;
  int technical = 0;
};

/// Starts the interpreter and imports gurobipy, once. Returns the empty string when both worked and the package is one
/// that this library can serve, else a text that names the Python and says what to do. Takes the lock of the
/// interpreter.
const std::string& loadGurobipy();

/// Whether loadGurobipy succeeded in some earlier call. Takes no lock.
bool gurobipyLoaded();

/// The package. Only after loadGurobipy() returned the empty string.
const Gurobipy& gurobipy();

}  // namespace bridge
