#include "tav/math/symbol_kind.h"

namespace tav::math {

std::string_view kindName(SymbolKind kind) {
  switch (kind) {
    case SymbolKind::kVariable:
      return "variable";
    case SymbolKind::kConstant:
      return "constant";
    case SymbolKind::kVector:
      return "vector argument";
    case SymbolKind::kLinear:
      return "linear function";
    case SymbolKind::kCall:
      return "function call";
    case SymbolKind::kExpression:
      return "expression";
    case SymbolKind::kExpressionView:
      return "expression view";
    case SymbolKind::kQuadratic:
      return "quadratic function";
  }
  return "unknown";
}

}  // namespace tav::math
