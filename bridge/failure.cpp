#include "bridge/failure.h"

#include <pybind11/pybind11.h>

#include <new>
#include <string_view>

#include "bridge/gurobipy.h"
#include "grb/gurobi/constants.h"

namespace py = pybind11;

namespace bridge {
namespace {

namespace error = grb::error;

/// A text of gurobipy's that comes without the library's code, and the code that the library has for the same failure.
struct KnownText {
  std::string_view part;
  int code;
};

// GurobiError with errno 0: checks that gurobipy makes before it calls the library.
constexpr KnownText kWithoutNumber[] = {
    {"Unknown parameter", error::kUnknownParameter},
    {"Unable to open file", error::kInvalidArgument},
    {"Unknown file type", error::kFileRead},
    {"Unable to read", error::kFileRead},
    {"Model has already been freed", error::kNullArgument},
    {"No Gurobi license", error::kNoLicense},
};

// AttributeError: failures of attributes of the whole model and of attribute writes.
constexpr KnownText kAttributeTexts[] = {
    {"Unable to retrieve attribute", error::kDataNotAvailable},
    {"No solution available", error::kDataNotAvailable},
    {"out of range for attribute", error::kIndexOutOfRange},
    {"It isn't a multi-objective model", error::kValueOutOfRange},
    {"It isn't a multi-scenario model", error::kValueOutOfRange},
    {"Value of parameter ObjNumber", error::kValueOutOfRange},
    {"Out of range for parameter value", error::kValueOutOfRange},
    {"has no attribute", error::kUnknownAttribute},
};

template <std::size_t N>
int codeOf(const std::string& text, const KnownText (&known)[N]) {
  for (const KnownText& row : known)
    if (text.find(row.part) != std::string::npos) return row.code;
  return error::kInvalidArgument;
}

int codeOfErrno(int number, const std::string& text) {
  constexpr int kNotInModel = 20001;  // gurobipy's own number for an element of another model
  if (number >= error::kOutOfMemory && number <= error::kOverflow) return number;
  if (number == kNotInModel) return error::kIndexOutOfRange;
  return codeOf(text, kWithoutNumber);
}

/// gurobipy words this one differently from the library.
std::string libraryText(const std::string& text) {
  constexpr std::string_view kUnknown = "Unknown parameter '";
  if (!text.starts_with(kUnknown) || !text.ends_with('\'')) return text;
  return "Unknown parameter: " + text.substr(kUnknown.size(), text.size() - kUnknown.size() - 1);
}

Failure fromPython(const py::error_already_set& e) {
  const py::object& value = e.value();
  if (e.matches(gurobipy().gurobiError)) {
    const auto text = value.attr("message").cast<std::string>();
    return {codeOfErrno(value.attr("errno").cast<int>(), text), libraryText(text)};
  }
  const std::string text = py::str(value).cast<std::string>();
  if (e.matches(PyExc_AttributeError)) return {codeOf(text, kAttributeTexts), text};
  if (e.matches(PyExc_MemoryError)) return {error::kOutOfMemory, "Out of memory"};
  return {error::kInvalidArgument, text};
}

Failure classify() {
  try {
    throw;
  } catch (const Failure& e) {
    return e;
  } catch (py::error_already_set& e) {
    return fromPython(e);
  } catch (const std::bad_alloc&) {
    return {error::kOutOfMemory, "Out of memory"};
  } catch (const std::exception& e) {
    return {error::kInvalidArgument, e.what()};
  }
}

}  // namespace

Failure currentFailure() noexcept {
  try {
    return classify();
  } catch (...) {
    return {error::kInvalidArgument, "An error of Python that cannot be described"};
  }
}

}  // namespace bridge
