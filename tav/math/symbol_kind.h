#pragma once

#include <string_view>

namespace tav::math {

namespace fn {
template <class T>
class Abstract;
}

enum class SymbolKind : int {
  kVariable = 0,
  kConstant = 1,
  kVector = 2,
  kLinear = 3,
  kCall = 4,
  kExpression = 5,
  kExpressionView = 6,
  kQuadratic = 7,
};

// The kind as messages call it: "variable", "constant", "vector argument", "linear function", "function call",
// "expression", "expression view", "quadratic function".
std::string_view kindName(SymbolKind kind);

// A variable: its position (0-based) in a variable space.
struct Variable {
  unsigned long long space = 0;
  int position = 0;
};

// A call of a function with so many arguments. Functions live as long as the program.
template <class T>
struct Call {
  const fn::Abstract<T>* function = nullptr;
  int argumentCount = 0;
};

}  // namespace tav::math
