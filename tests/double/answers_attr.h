// Answers of the attribute functions.
#pragma once

#include <fmt/format.h>

#include <cmath>
#include <cstddef>
#include <vector>

#include "tests/double/answer.h"
#include "tests/double/attr_lookup.h"

namespace gurobi_double {

inline int unavailable(GRBmodel* model, const char* name) {
  return failed(model, grb::error::kDataNotAvailable, fmt::format("Unable to retrieve attribute '{}'", name));
}

/// 10006 unless the element is there: for reads in the model as updated, for writes also in the queue.
inline int checkElement(GRBmodel* model, const char* name, int element, bool writing) {
  const Kind kind = attrKind(lower(name));
  const int end = writing ? model->total(kind) : model->committed[static_cast<int>(kind)];
  if (kind == Kind::kModel || (element >= 0 && element < end)) return 0;
  return failed(model, grb::error::kIndexOutOfRange,
                fmt::format("Index {} out of range for attribute '{}'", element, name));
}

template <typename T>
int readNumber(State& state, GRBmodel* model, const char* name, T* value) {
  const auto found = findNumber(state, *model, lower(name));
  if (!found) return unavailable(model, name);
  *value = static_cast<T>(*found);
  return 0;
}

inline int handOut(State& state, GRBmodel* model, const char* name, const std::optional<std::string>& text,
                   char** value) {
  if (!text) return unavailable(model, name);
  state.textBuffer = *text;
  *value = state.textBuffer.data();
  return 0;
}

/// The elements first, first + 1, ... or those of a list.
struct Elements {
  int number;
  int first = 0;
  const int* list = nullptr;

  int at(int i) const { return list != nullptr ? list[i] : first + i; }
};

/// Values of several elements; the target is touched only when all are there.
template <typename T>
int readElements(State& state, GRBmodel* model, const char* name, const Elements& elements, T* values) {
  std::vector<T> found;
  for (int i = 0; i < elements.number; ++i) {
    const int element = elements.at(i);
    if (const int code = checkElement(model, name, element, false); code != 0) return code;
    const auto value = findNumber(state, *model, lower(name), element);
    if (!value) return unavailable(model, name);
    found.push_back(static_cast<T>(*value));
  }
  std::copy(found.begin(), found.end(), values);
  return 0;
}

template <typename T>
int writeElements(GRBmodel* model, const char* name, const Elements& elements, const T* values) {
  for (int i = 0; i < elements.number; ++i) {
    if (const int code = checkElement(model, name, elements.at(i), true); code != 0) return code;
    if constexpr (std::is_floating_point_v<T>) {
      if (std::isnan(values[i])) {
        return failed(model, grb::error::kInvalidArgument, fmt::format("Element {} of a double array is Nan.", i));
      }
    }
  }
  std::map<int, double>& queued = model->queuedValues.elementNumbers[lower(name)];
  for (int i = 0; i < elements.number; ++i) queued[elements.at(i)] = values[i];
  return 0;
}

// The forms that differ only in the type of their values.
template <typename T>
struct ReadScalar {
  static int run(State& state, GRBmodel* model, const char* name, T* value) {
    return readNumber(state, model, name, value);
  }
};
template <typename T>
struct WriteScalar {
  static int run(State&, GRBmodel* model, const char* name, T value) {
    model->queuedValues.numbers[lower(name)] = value;
    return 0;
  }
};
template <typename T>
struct ReadElement {
  static int run(State& state, GRBmodel* model, const char* name, int element, T* value) {
    return readElements(state, model, name, {1, element}, value);
  }
};
template <typename T>
struct WriteElement {
  static int run(State&, GRBmodel* model, const char* name, int element, T value) {
    return writeElements(model, name, {1, element}, &value);
  }
};
template <typename T>
struct ReadArray {
  static int run(State& state, GRBmodel* model, const char* name, int first, int number, T* values) {
    return readElements(state, model, name, {number, first}, values);
  }
};
template <typename T>
struct WriteArray {
  static int run(State&, GRBmodel* model, const char* name, int first, int number, T* values) {
    return writeElements(model, name, {number, first}, values);
  }
};
template <typename T>
struct ReadList {
  static int run(State& state, GRBmodel* model, const char* name, int number, int* elements, T* values) {
    return readElements(state, model, name, {number, 0, elements}, values);
  }
};
template <typename T>
struct WriteList {
  static int run(State&, GRBmodel* model, const char* name, int number, int* elements, T* values) {
    return writeElements(model, name, {number, 0, elements}, values);
  }
};

template <>
struct Answer<Fn::GRBisattravailable> {
  static int run(State& state, GRBmodel* model, const char* name) {
    return model != nullptr && isAvailable(state, *model, lower(name)) ? 1 : 0;
  }
};
template <>
struct Answer<Fn::GRBgetstrattr> {
  static int run(State& state, GRBmodel* model, const char* name, char** value) {
    return handOut(state, model, name, findText(state, *model, lower(name)), value);
  }
};
template <>
struct Answer<Fn::GRBsetstrattr> {
  static int run(State&, GRBmodel* model, const char* name, const char* value) {
    model->queuedValues.texts[lower(name)] = value;
    return 0;
  }
};
template <>
struct Answer<Fn::GRBgetstrattrelement> {
  static int run(State& state, GRBmodel* model, const char* name, int element, char** value) {
    if (const int code = checkElement(model, name, element, false); code != 0) return code;
    return handOut(state, model, name, findText(state, *model, lower(name), element), value);
  }
};
template <>
struct Answer<Fn::GRBsetstrattrelement> {
  static int run(State&, GRBmodel* model, const char* name, int element, const char* value) {
    if (const int code = checkElement(model, name, element, true); code != 0) return code;
    model->queuedValues.elementTexts[lower(name)][element] = value;
    return 0;
  }
};

// clang-format off
template <> struct Answer<Fn::GRBgetintattr> : ReadScalar<int> {};
template <> struct Answer<Fn::GRBgetdblattr> : ReadScalar<double> {};
template <> struct Answer<Fn::GRBsetintattr> : WriteScalar<int> {};
template <> struct Answer<Fn::GRBsetdblattr> : WriteScalar<double> {};
template <> struct Answer<Fn::GRBgetintattrelement> : ReadElement<int> {};
template <> struct Answer<Fn::GRBgetdblattrelement> : ReadElement<double> {};
template <> struct Answer<Fn::GRBgetcharattrelement> : ReadElement<char> {};
template <> struct Answer<Fn::GRBsetintattrelement> : WriteElement<int> {};
template <> struct Answer<Fn::GRBsetdblattrelement> : WriteElement<double> {};
template <> struct Answer<Fn::GRBgetintattrarray> : ReadArray<int> {};
template <> struct Answer<Fn::GRBgetdblattrarray> : ReadArray<double> {};
template <> struct Answer<Fn::GRBgetcharattrarray> : ReadArray<char> {};
template <> struct Answer<Fn::GRBsetintattrarray> : WriteArray<int> {};
template <> struct Answer<Fn::GRBsetdblattrarray> : WriteArray<double> {};
template <> struct Answer<Fn::GRBgetintattrlist> : ReadList<int> {};
template <> struct Answer<Fn::GRBgetdblattrlist> : ReadList<double> {};
template <> struct Answer<Fn::GRBgetcharattrlist> : ReadList<char> {};
template <> struct Answer<Fn::GRBsetintattrlist> : WriteList<int> {};
template <> struct Answer<Fn::GRBsetdblattrlist> : WriteList<double> {};
// clang-format on

}  // namespace gurobi_double
