// Numbers, letters and texts on their way between C and Python.
#pragma once

#include <pybind11/pybind11.h>

#include <string>

namespace bridge {

/// Lists of `n` entries. The array is not looked at when n is 0 or less.
pybind11::list doubleList(int n, const double* values);
pybind11::list intList(int n, const int* values);
pybind11::list charList(int n, const char* values);  ///< strings of one character

/// The same for arrays that may be NULL: None then, which gurobipy takes for its default.
pybind11::object doublesOr(int n, const double* values, const pybind11::object& otherwise);

/// A name or an option string. NULL is the empty string. What is not UTF-8 is taken for Latin-1, since gurobipy could
/// not read such a name back.
pybind11::object text(const char* value);

/// A file name. What is not UTF-8 is passed on as bytes.
pybind11::object path(const char* value);

/// One character as a string.
pybind11::object letter(char value);

/// The sense of a row as gurobipy takes it everywhere: L, G and E become signs. Throws Failure 10003 for any other
/// character, in the library's words, since gurobipy has words of its own for each kind of row.
pybind11::object senseOf(char value);

/// A number as the C interface writes it: gurobipy turns +-1e100 into infinities, and this turns them back.
double number(double value);
double number(pybind11::handle value);

int integer(pybind11::handle value);
char character(pybind11::handle value);
std::string string(pybind11::handle value);

}  // namespace bridge
