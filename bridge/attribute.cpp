#include "bridge/attribute.h"

#include <fmt/format.h>

#include <cctype>
#include <string>
#include <unordered_map>

#include "bridge/failure.h"
#include "bridge/gurobipy.h"
#include "bridge/model.h"
#include "bridge/values.h"
#include "grb/gurobi/constants.h"

namespace py = pybind11;

namespace bridge {
namespace {

Attribute ask(const Model& model, const char* name) {
  try {
    const py::tuple info = gurobipy().attributeInfo(model.object(), text(name));
    return {static_cast<Type>(integer(info[0])), static_cast<Kind>(integer(info[1])), integer(info[2]) != 0};
  } catch (py::error_already_set& e) {
    if (!e.matches(PyExc_AttributeError)) throw;
    throw Failure(grb::error::kUnknownAttribute, fmt::format("Unknown attribute '{}'", name));
  }
}

std::string lowered(const char* name) {
  std::string result(name);
  for (char& c : result) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return result;
}

}  // namespace

const Attribute& attribute(const Model& model, const char* name) {
  static auto* const kKnown = new std::unordered_map<std::string, Attribute>;  // the interpreter's lock guards it
  if (name == nullptr) throw Failure(grb::error::kNullArgument, "The name of the attribute is NULL");
  const std::string key = lowered(name);
  const auto found = kKnown->find(key);
  return found != kKnown->end() ? found->second : kKnown->emplace(key, ask(model, name)).first->second;
}

const Attribute& attribute(const Model& model, const char* name, Type type) {
  const Attribute& known = attribute(model, name);
  if (known.type != type)
    throw Failure(grb::error::kInvalidArgument, fmt::format("Wrong type for attribute '{}'", name));
  return known;
}

void requireModelAttribute(const Model& model, const char* name, Type type) {
  if (attribute(model, name, type).kind != Kind::kModel)
    throw Failure(grb::error::kInvalidArgument, fmt::format("Attribute '{}' is not one of the whole model", name));
}

Elements& elementsOf(Model& model, const char* name, Type type) {
  const Kind kind = attribute(model, name, type).kind;
  if (kind == Kind::kModel)
    throw Failure(grb::error::kInvalidArgument, fmt::format("Attribute '{}' is one of the whole model", name));
  return model.elements(kind);
}

}  // namespace bridge
