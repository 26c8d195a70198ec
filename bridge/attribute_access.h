// Reading and writing attributes of elements, for every type alike.
#pragma once

#include <pybind11/pybind11.h>

#include <type_traits>

#include "bridge/attribute.h"
#include "bridge/model.h"
#include "bridge/values.h"

namespace bridge {

/// Runs `call`, which uses attributes of `model`, and once more when it fails: gurobipy tells most failures of
/// attributes by the library's text alone, and the library keeps the text of an earlier failure through some of them.
/// The second failure has its own text.
template <class Call>
auto withFreshText(Model& model, Call&& call) {
  try {
    return call();
  } catch (const pybind11::error_already_set&) {
    model.count("NumVars");  // any successful call empties the text
    return call();
  }
}

/// The attribute's values of `elements` as a list of the same length.
pybind11::list readAttribute(Model& model, const char* name, const pybind11::list& elements);

void writeAttribute(Model& model, const char* name, const pybind11::list& elements, const pybind11::list& values);

/// Type of the attributes whose values C holds in T.
template <class T>
constexpr Type typeOf() {
  if constexpr (std::is_same_v<T, char>) return Type::kChar;
  if constexpr (std::is_same_v<T, int>) return Type::kInt;
  return Type::kDouble;
}

/// Copies a list of Python values to `out`. Nothing is written unless all of them can be converted.
template <class T>
void copyOut(const pybind11::list& values, T* out);

template <class T>
pybind11::list listOf(int n, const T* values) {
  if constexpr (std::is_same_v<T, int>) return intList(n, values);
  if constexpr (std::is_same_v<T, double>) return doubleList(n, values);
}

template <class T>
void readRange(Model& m, const char* name, int first, int len, T* out) {
  const pybind11::list elements = elementsOf(m, name, typeOf<T>()).slice(first, len);
  copyOut(readAttribute(m, name, elements), out);
}

template <class T>
void readList(Model& m, const char* name, int len, const int* ind, T* out) {
  const pybind11::list elements = elementsOf(m, name, typeOf<T>()).pick(len, ind);
  copyOut(readAttribute(m, name, elements), out);
}

template <class T>
void writeRange(Model& m, const char* name, int first, int len, const T* values) {
  const pybind11::list elements = elementsOf(m, name, typeOf<T>()).slice(first, len);
  writeAttribute(m, name, elements, listOf(len, values));
}

template <class T>
void writeList(Model& m, const char* name, int len, const int* ind, const T* values) {
  const pybind11::list elements = elementsOf(m, name, typeOf<T>()).pick(len, ind);
  writeAttribute(m, name, elements, listOf(len, values));
}

}  // namespace bridge
