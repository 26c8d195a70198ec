// Attributes: what is known about each name.
#pragma once

#include "bridge/elements.h"

namespace bridge {

class Model;

/// Types of attributes, in gurobipy's numbering.
enum class Type { kChar = 0, kInt = 1, kDouble = 2, kText = 3 };

struct Attribute {
  Type type;
  Kind kind;
  bool writable;
};

/// What gurobipy knows about the attribute; names are case-insensitive. Throws Failure 10004 for an unknown name and
/// 10002 for NULL. With the lock held.
const Attribute& attribute(const Model& model, const char* name);

/// The same, and Failure 10003 unless the attribute has type `type`.
const Attribute& attribute(const Model& model, const char* name, Type type);

/// Checks that it belongs to the whole model. Throws Failure 10003 if not.
void requireModelAttribute(const Model& model, const char* name, Type type);

/// The elements it belongs to. Throws Failure 10003 for an attribute of the whole model.
Elements& elementsOf(Model& model, const char* name, Type type);

}  // namespace bridge
