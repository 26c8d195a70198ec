// Expressions from texts such as "Subtract(x0, Exp(x1))".
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "tav/math/symbol.h"

/// Names are those at the end of the functions' identifiers. x3 is the variable 3 of the space, y3 that of another one.
/// Further words: [1 2] is a vector, lin(2 x0 -1 x3 5) the linear function 2 x0 - x3 + 5 as a sub-expression, terms(1
/// x0 1 x1) as it stands in the place of a vector. Ends the test program on a text that is none.
std::shared_ptr<const tav::math::Expression<double>> expression(std::uint64_t space, std::string_view text);

/// The same as a symbol that owns the expression.
inline tav::math::Symbol<double> symbol(std::uint64_t space, std::string_view text) {
  return tav::math::Symbol<double>::ofExpression(expression(space, text));
}
